#pragma once

#include "Platform/BriefMutex.h"
#include "Platform/FileSystem.h"
#include "Platform/Linux/FileDescriptor.h"
#include "Platform/Linux/Measure.h"

#include <atomic>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace morlaine {

class LinuxFolder;

/// What all folders of one walk share. Any thread.
struct WalkState {
    BriefMutex mutex;                     // for the next, and for the descriptors of all folders
    std::deque<LinuxFolder*> openFolders; // longest unused first
    std::atomic<bool> hasOpenat2 = true;  // until the kernel, or a filter of system calls, says otherwise
    std::optional<WalkedVolume> volume;   // known when the top is first opened, which comes before everything
};

/// A folder of a walk. It is opened when it is listed, relative to the one above it, unless something has been mounted
/// there, and stays open where folders are in it. Only those used last do (fewer when descriptors run out); one that
/// was closed is found again through ".." of a folder in it, or from the start of the walk, and cannot be listed when
/// another stands there.
class LinuxFolder final : public Folder {
public:
    /// The folder at the absolute `path`, at which a walk begins.
    explicit LinuxFolder(std::string path);
    LinuxFolder(LinuxFolder& parent, std::string_view name);
    ~LinuxFolder() override;

    [[nodiscard]] bool list(FolderContents& contents, const std::stop_token& stop, const ListingPace& pace) override;
    [[nodiscard]] bool lackedDescriptors() const noexcept override { return m_lackedDescriptors; }
    [[nodiscard]] std::unique_ptr<Folder> folder(std::string_view name) override;

private:
    struct Identity {
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        friend bool operator==(const Identity&, const Identity&) = default;
    };
    using Handle = std::shared_ptr<const FileDescriptor>; // open as long as a thread uses it

    [[nodiscard]] static std::optional<Identity> identityOf(const FileDescriptor& descriptor);

    [[nodiscard]] bool listOpened(int descriptor, FolderContents& contents, const std::stop_token& stop,
                                  const ListingPace& pace, bool& holdsFolders) const;
    [[nodiscard]] FileDescriptor openForListing();
    [[nodiscard]] Handle open(int& failure);
    [[nodiscard]] Handle openOrAbove(std::vector<LinuxFolder*>& closed);
    [[nodiscard]] FileDescriptor openFrom(const Handle& above);
    [[nodiscard]] FileDescriptor tryToOpenFrom(const Handle& above);
    [[nodiscard]] FileDescriptor openWithin(const FileDescriptor& folder, const char* name);
    [[nodiscard]] Handle keep(FileDescriptor descriptor);
    [[nodiscard]] bool setOneAside();
    void setAside();
    void reopenParent(const FileDescriptor& from);

    LinuxFolder* const m_parent;
    const std::string m_name;                    // the whole path where there is no parent
    const std::unique_ptr<WalkState> m_ownState; // of the top
    WalkState& m_state;
    Handle m_descriptor;
    std::optional<Identity> m_identity; // known once the folder has been set aside
    std::atomic<bool> m_isSetAside = false;
    bool m_wasKept = false; // open, at least for a while, for the folders in it
    bool m_lackedDescriptors = false;
};

} // namespace morlaine
