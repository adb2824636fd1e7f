#pragma once

namespace morlaine::test {

/// After each test and its fixture, waits for all background work that the test has started, and fails the test if some
/// of it does not end. Call once, before the tests run.
void waitForBackgroundAfterEachTest();

} // namespace morlaine::test
