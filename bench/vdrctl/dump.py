"""Dumps a document as JSON as often as it is told, and writes how many nanoseconds that took.

usage: dump.py FILE
"""
import json
import sys
import time

with open(sys.argv[1], encoding="ascii") as file:
    document = json.load(file)
print(0, flush=True)
with open("/dev/null", "w", encoding="ascii") as nowhere:
    for line in sys.stdin:
        start = time.monotonic_ns()
        for _ in range(int(line)):
            json.dump(document, nowhere)
        print(time.monotonic_ns() - start, flush=True)
