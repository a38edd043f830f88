"""The loop of engine_benchmark's mixed rows in Python; prints the time of a line."""

import re
import sys
import time

LINES, ROUNDS = 10_000, 50


def work():
    letter = re.compile("n", re.IGNORECASE)
    for _ in range(LINES // 5):
        name = "Ann, of the mill"
        age = "7"
        greeting = f"Hello {name}, you are {age}"
        out = letter.sub("_", greeting)
        who = name
    return out, who


start = time.process_time()
for _ in range(ROUNDS):
    work()
seconds = time.process_time() - start
version = f"Python {sys.version_info.major}.{sys.version_info.minor}"
print(f"{version:24} {seconds / LINES / ROUNDS * 1e9:33.0f} ns a line")
