#pragma once

#include "Utilities/FileUrl.h"

#include <QIODevice>

#include <memory>
#include <string>
#include <vector>

class QFile;

namespace morlaine {

/// Makes the folder and its parents, accessible to this user only. False if it does not exist afterwards. Any thread.
bool makePrivateFolder(const FileUrl& folder);

/// Removes a file, a link, or a folder with everything inside it. False if something remains. Any thread.
bool removeItem(const FileUrl& item);

/// Opens `file` for reading on the regular file at `url`, by its exact bytes. False for anything else; does not block
/// on a pipe. Throws std::bad_alloc if the system is short of memory or descriptors. Any thread.
[[nodiscard]] bool openRegularFile(QFile& file, const FileUrl& url);

/// A file that appears whole or not at all, readable by this user only. Data is written to a locked temporary file in
/// the same folder; a `commit` moves it to `target`. Until then, and on any failure, the target is unchanged, and the
/// destructor removes the temporary file. Writing fails once the temporary file has been removed. One thread at a time,
/// also for destruction.
class AtomicFile final : public QIODevice {
public:
    /// Opens the temporary file; `isOpen` says whether that succeeded.
    explicit AtomicFile(const FileUrl& target);
    ~AtomicFile() override;

    /// Flushes the file to the disk, then moves it to the target. False if anything failed, now or while writing.
    [[nodiscard]] bool commit();

    /// Moves the file to the target at once; `flush` must follow. The replaced file is kept beside it under a temporary
    /// name, so that a crash of the machine leaves at least one of them whole. Flushes first if the file system cannot
    /// exchange files. False as above.
    [[nodiscard]] bool commitUnflushed();

    /// Flushes a file that `commitUnflushed` has moved to the target, then removes the file that it replaced.
    void flush();

    /// A temporary file that no running program is writing. Locked as long as this object exists.
    struct Abandoned {
        FileUrl url;
        std::shared_ptr<const void> lock;
    };

    /// The abandoned files in the folder, newest first: those of programs that were killed, and those replaced by an
    /// unflushed commit.
    [[nodiscard]] static std::vector<Abandoned> abandonedIn(const FileUrl& folder);

    /// Flushes the file at `target`, then removes the abandoned files. Keeps them if flushing fails.
    static void flush(const FileUrl& target, const std::vector<Abandoned>& abandoned);

    /// Removes the file and its temporary files, so that a program that is writing it cannot finish.
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
    std::string m_temporary; // empty if there is none
    std::string m_replaced;  // the file that was exchanged for this one; empty if there is none
    int m_descriptor = -1;
    bool m_hasFailed = false;
};

/// Makes SIGHUP, SIGINT and SIGTERM remove the temporary files of this program before they end it. Other threads are
/// not waited for. Ignored signals stay ignored. Call once, before other threads are started.
void removeTemporaryFilesOnSignals();

} // namespace morlaine
