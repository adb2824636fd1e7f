#pragma once

#include "Platform/FileSystem.h"
#include "Platform/Linux/FileDescriptor.h"
#include "Platform/Linux/Measure.h"

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

/// What all folders of one walk share: the few descriptors that are open at once, and the buffer for listings.
struct WalkState {
    std::deque<LinuxFolder*> openFolders; // those nearest to where the walk is, outermost first
    std::vector<char> listingBuffer;
    bool hasOpenat2 = true; // until the kernel, or a filter of system calls, says otherwise
    WalkedVolume volume;    // of the folder at which the walk began
};

/// A folder of a walk. It is opened when it is first needed, relative to the one above it, unless something has been
/// mounted there. Only the innermost few stay open (fewer when descriptors run out); one that was closed is found again
/// through ".." of the folder below it, or from the start of the walk, and cannot be listed when another stands there.
class LinuxFolder final : public Folder {
public:
    /// The folder at the absolute `path`, at which a walk begins.
    explicit LinuxFolder(std::string path);
    LinuxFolder(LinuxFolder& parent, std::string_view name);
    ~LinuxFolder() override;

    [[nodiscard]] bool list(FolderContents& contents, const std::stop_token& stop) override;
    [[nodiscard]] std::unique_ptr<Folder> folder(std::string_view name) override;

private:
    struct Identity {
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        friend bool operator==(const Identity&, const Identity&) = default;
    };

    [[nodiscard]] static std::optional<Identity> identityOf(const FileDescriptor& descriptor);

    [[nodiscard]] bool open();
    [[nodiscard]] FileDescriptor openFromParent();
    [[nodiscard]] FileDescriptor tryToOpenFromParent();
    [[nodiscard]] FileDescriptor openWithin(const FileDescriptor& folder, const char* name);
    void keep(FileDescriptor descriptor);
    void setOutermostAside();
    void setAside();
    void reopenParent();

    LinuxFolder* const m_parent;
    const std::string m_name; // the whole path where there is no parent
    const std::shared_ptr<WalkState> m_state;
    FileDescriptor m_descriptor;
    std::optional<Identity> m_identity; // known once the folder has been set aside
};

} // namespace morlaine
