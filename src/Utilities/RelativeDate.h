#pragma once

#include "Utilities/Date.h"

#include <string>

namespace morlaine {

/// `date` as seen from `now` in abbreviated English: "2 hr. ago", "in 5 min.", "1 mo. ago". The unit is the largest of
/// second, minute, hour, day, week, month and year that fits at least once; less than a second is "0 sec. ago". Months
/// and years are those of the calendar in UTC. Any thread.
[[nodiscard]] std::string formatDate(Date date, Date now = Date::now());

} // namespace morlaine
