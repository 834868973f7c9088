"""How far the work is."""

import time

SECONDS = 30


class Progress:
    """Tells now and then how much is done, and how long the rest takes if it goes on like that."""

    def __init__(self, total):
        self._total, self._started = total, time.monotonic()
        self._told = self._started

    def tell(self, left):
        now = time.monotonic()
        done = self._total - left
        if done and now - self._told >= SECONDS:
            self._told = now
            minutes = (now - self._started) / done * left / 60
            print(f"{done} of {self._total} tried, about {minutes:.0f} minutes left", flush=True)
