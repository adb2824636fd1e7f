#pragma once

namespace morlaine::test {

/// Makes each test wait at its end, after its fixture is destroyed, for all background work that it has started, and
/// fail where some of it does not end. Call once, before the tests run.
void waitForBackgroundAfterEachTest();

} // namespace morlaine::test
