#pragma once

#include "Utilities/FileUrl.h"

#include <QIODevice>

#include <string>

namespace morlaine {

/// Makes the folder and those above it, for this user alone. False when it is not there afterwards. Any thread.
bool makePrivateFolder(const FileUrl& folder);

/// Removes a file, a link, or a folder with all that it holds. False when something of it remains. Any thread.
bool removeItem(const FileUrl& item);

/// A file that appears whole or not at all, readable by this user alone. What is written goes to a temporary file in
/// the same folder; `commit` brings it to the disk and puts it in the place of `target`. Until then, and when anything
/// fails, the target stays as it was and the temporary file goes with this object. One thread at a time.
class AtomicFile final : public QIODevice {
public:
    /// Opens the temporary file; `isOpen` tells whether that went well.
    explicit AtomicFile(const FileUrl& target);
    ~AtomicFile() override;

    /// False when anything failed, now or while writing. A crash of the machine soon after may undo it as a whole.
    [[nodiscard]] bool commit();

    /// Removes the temporary files of `*.json` that programs which were killed while writing have left in the folder.
    /// One that was written to within a day is spared, since its writer may be at work.
    static void removeAbandoned(const FileUrl& folder);

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    void discard();

    std::string m_target;
    std::string m_temporary; // empty when there is none
    int m_descriptor = -1;
    bool m_hasFailed = false;
};

} // namespace morlaine
