"""Reads the records of the preloaded library LoopWatch.cpp about the program's main thread."""

import mmap
import time

HEADER, CAPACITY = 3, 65_536  # numbers of eight bytes before the absences; absences
QUIET_MS, QUIET_SPANS, SPAN = 2, 3, 0.1
PATIENCE = 600.0


class LoopWatch:
    """One program, from its start to its end."""

    def __init__(self, path, process):
        self._process = process
        with open(path, "r+b") as file:
            self._numbers = memoryview(mmap.mmap(file.fileno(), 0)).cast("q")

    @property
    def last_measured(self):
        """When the scan measured its last file; like all times here, nanoseconds of the monotonic clock."""
        return self._numbers[1]

    def absences(self, begin, end):
        """Milliseconds of each absence that began between the two times, or was in progress at the first."""
        count = self._numbers[2]
        if count == 0 or count > CAPACITY:
            raise RuntimeError(f"{count} absences noted, so that the watch says nothing")
        pairs = [self._numbers[HEADER + 2 * i:HEADER + 2 * i + 2] for i in range(count)]
        return [(to - start) / 1e6 for start, to in pairs if start < end and to > begin]

    def wait_for_rest(self):
        """Waits until the main thread is in its event loop and the program takes almost no processor time."""
        deadline = time.monotonic() + PATIENCE
        spans = 0
        while spans < QUIET_SPANS:
            before = self._processor_ms()
            time.sleep(SPAN)
            is_quiet = self._processor_ms() - before < QUIET_MS and self._numbers[0] == 0
            spans = spans + 1 if is_quiet else 0
            if time.monotonic() > deadline:
                raise AssertionError("the program does not come to rest")

    def resident_mb(self):
        """Current and peak resident memory, in MB of a million bytes."""
        with open(f"/proc/{self._process.pid}/status") as status:
            values = dict(line.split(":", 1) for line in status)
        return [int(values[key].split()[0]) * 1024 / 1e6 for key in ("VmRSS", "VmHWM")]

    def _processor_ms(self):
        if self._process.poll() is not None:
            raise AssertionError(f"the program ended with {self._process.returncode}")
        # The clock of all threads of another process, as the C library composes its number.
        return time.clock_gettime(~self._process.pid << 3 | 2) * 1e3
