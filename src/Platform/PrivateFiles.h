#pragma once

#include "Utilities/FileUrl.h"

#include <QIODevice>

#include <memory>
#include <string>
#include <vector>

class QFile;

namespace morlaine {

/// Makes the folder and those above it, for this user alone. False when it is not there afterwards. Any thread.
bool makePrivateFolder(const FileUrl& folder);

/// Removes a file, a link, or a folder with all that it holds. False when something of it remains. Any thread.
bool removeItem(const FileUrl& item);

/// Opens `file` on the regular file at `url` for reading, by its exact bytes. False for anything else; does not wait
/// for the other end of a pipe. Any thread.
[[nodiscard]] bool openRegularFile(QFile& file, const FileUrl& url);

/// A file that appears whole or not at all, readable by this user alone. What is written goes to a temporary file in
/// the same folder, which is locked while it is written; a `commit` puts it in the place of `target`. Until then, and
/// when anything fails, the target stays as it was and the temporary file goes with this object. Writing fails once
/// somebody has removed the temporary file. One thread at a time, also its destruction.
class AtomicFile final : public QIODevice {
public:
    /// Opens the temporary file; `isOpen` tells whether that went well.
    explicit AtomicFile(const FileUrl& target);
    ~AtomicFile() override;

    /// Brings the file to the disk, then puts it in its place. False when anything failed, now or while writing.
    [[nodiscard]] bool commit();

    /// Puts the file in its place at once; `flush` must follow. The file that it replaces stays beside it under a
    /// temporary name, so that a crash of the machine leaves at least one of them whole. Waits for the disk only where
    /// the file system cannot exchange files. False as above.
    [[nodiscard]] bool commitUnflushed();

    /// Brings a file that `commitUnflushed` has put in its place to the disk, then removes the one that it replaced.
    void flush();

    /// A temporary file that no living program is writing, locked against being used as one while this lives.
    struct Abandoned {
        FileUrl url;
        std::shared_ptr<const void> lock;
    };

    /// Such files in the folder, the newest first: what a program that was killed has left. The file that an unflushed
    /// one has replaced is among them, whoever flushes it.
    [[nodiscard]] static std::vector<Abandoned> abandonedIn(const FileUrl& folder);

    /// Brings the file that is at `target` now to the disk, then removes the abandoned files. If that fails, these
    /// stay.
    static void flush(const FileUrl& target, const std::vector<Abandoned>& abandoned);

    /// Removes the file and the temporary files for it, so that no program that is writing it now can finish.
    static void remove(const FileUrl& target);

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    [[nodiscard]] bool openTemporary();
    [[nodiscard]] bool isComplete() const;
    [[nodiscard]] bool finish(bool isInPlace);
    void discard();

    std::string m_target;
    std::string m_temporary; // empty when there is none
    std::string m_replaced;  // the file that was exchanged for this one; empty when there is none
    int m_descriptor = -1;
    bool m_hasFailed = false;
};

/// From now on SIGHUP, SIGINT and SIGTERM remove the temporary files of this program and then end it as they would have
/// without this call. Nothing is awaited, whatever other threads are doing. A signal that is ignored stays ignored.
/// Call once, before other threads are started.
void removeTemporaryFilesOnSignals();

} // namespace morlaine
