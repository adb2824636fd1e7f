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

/// State shared by all folders of one walk. Any thread.
struct WalkState {
    BriefMutex mutex;                     // protects `openFolders` and the descriptors of all folders
    std::deque<LinuxFolder*> openFolders; // least recently used first
    std::atomic<bool> hasOpenat2 = true;  // until a call fails with ENOSYS or EPERM
    std::optional<WalkedVolume> volume;   // set when the top is first opened, before any other folder
};

/// A folder of a walk. Opened when it is listed, relative to its parent; fails if it has become a mount point. It stays
/// open if it has subfolders, but only the most recently used folders do (fewer if descriptors run out). A closed one
/// is reopened through ".." of a folder inside it, or from the top of the walk; this fails if another folder has taken
/// its place.
class LinuxFolder final : public Folder {
public:
    /// The top folder of a walk, at the absolute `path`.
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
    using Handle = std::shared_ptr<const FileDescriptor>; // stays open while a thread uses it

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
    const std::string m_name;                    // the whole path for the top
    const std::unique_ptr<WalkState> m_ownState; // of the top only
    WalkState& m_state;
    Handle m_descriptor;
    std::optional<Identity> m_identity; // known once the folder has been closed
    std::atomic<bool> m_isSetAside = false;
    bool m_wasKept = false; // was left open for its subfolders
    bool m_lackedDescriptors = false;
};

} // namespace morlaine
