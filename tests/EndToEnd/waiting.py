"""Waiting for conditions."""

import time

# In seconds. Long enough for a slow, busy machine; only failures take this long.
PATIENCE = 180.0
INTERVAL = 0.02


def wait_for(condition, what, patience=PATIENCE, interval=INTERVAL):
    """Returns the first true value of condition(); fails if there is none in time."""
    deadline = time.monotonic() + patience
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"waited {patience:.0f} s in vain for {what}")
        time.sleep(interval)
