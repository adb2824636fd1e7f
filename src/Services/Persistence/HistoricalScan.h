#pragma once

#include "Utilities/Date.h"
#include "Utilities/DecodeError.h"
#include "Utilities/Uuid.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <variant>
#include <vector>

class QIODevice;

namespace morlaine {

/// One entry of the scan history.
struct HistoricalScan {
    Uuid id;                    // also names the file of the scan's tree
    std::string path;           // of the scanned folder, valid UTF-8
    Date date;                  // when the scan was saved
    std::int64_t totalSize = 0; // bytes
    std::int64_t filesCount = 0;
    std::int64_t directoriesCount = 0;

    friend bool operator==(const HistoricalScan&, const HistoricalScan&) = default;
};

/// Writes the list as an indented JSON array to `sink` (open for writing). False when writing fails.
[[nodiscard]] bool encodeHistory(std::span<const HistoricalScan> history, QIODevice& sink);

/// Reads such an array from `source` (open for reading) to its end. Any error rejects it as a whole.
[[nodiscard]] std::variant<std::vector<HistoricalScan>, DecodeError> decodeHistory(QIODevice& source);

} // namespace morlaine

template <>
struct std::hash<morlaine::HistoricalScan> {
    [[nodiscard]] std::size_t operator()(const morlaine::HistoricalScan& scan) const noexcept
    {
        return std::hash<morlaine::Uuid>()(scan.id) ^ std::hash<double>()(scan.date.secondsSince2001);
    }
};
