"""What the Python package costs: each figure against the time it has to keep. Run by make bench-python."""

import sqlite3
import subprocess
import sys
import tempfile
import time
import timeit
from pathlib import Path

import orvactions as orv

TEXT = "PanLeft (Camera: 7, Speed: 3)"
ACTION = orv.parse(TEXT)
RULES = orv.RuleSet(f"@ PanLeft (Camera: {number})" for number in range(100))
EVENTS = 100_000


def microseconds(work) -> float:
    """The best of many runs, each shorter than a turn of the scheduler: other programs spoil some of them, not all."""
    return min(timeit.repeat(work, number=100, repeat=1000)) / 100 * 1e6


def seconds_for_events(tool: str) -> float:
    """Of the processor, not of the clock, which other programs on the machine would lengthen."""
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder) / "bench.db"
        subprocess.run([tool, "events", "store", str(path)], input=f"{TEXT}\n" * 10, text=True, check=True,
                       capture_output=True)
        connection = sqlite3.connect(path)
        connection.executescript("create temp table Ten as select * from Events; update Ten set Id = null;"
                                 "create temp table Thousand as select a.* from Ten a, Ten b, Ten c;")
        for _ in range(EVENTS // 1000):
            connection.execute("insert into Events select * from Thousand")
        connection.execute("delete from Events where Id <= 10")
        connection.commit()
        connection.close()
        with orv.events.open(path) as events:
            best = float("inf")
            for _ in range(3):
                begin = time.process_time()
                rows = events.to_dicts()
                best = min(best, time.process_time() - begin)
            assert len(rows) == EVENTS and rows[0]["parameters"]["Speed"] == 3
            return best


def main() -> int:
    late = 0
    for name, limit, work in [
        ("create with two parameters", 8, lambda: orv.Action("PanLeft", Camera=7, Speed=3)),
        ("create by the typed class", 8, lambda: orv.actions.PanLeft(Camera=7, Speed=3)),
        ("parse", 6, lambda: orv.parse(TEXT)),
        ("to_dict", 12, ACTION.to_dict),
        ("to_bytes", None, ACTION.to_bytes),
        ("to_text", None, ACTION.to_text),
        ("read a parameter", None, lambda: ACTION["Speed"]),
        ("100 rules of one name", None, lambda: RULES.match(ACTION)),
    ]:
        cost = microseconds(work)
        late += limit is not None and cost > limit
        print(f"{name:28} {cost:8.2f} us" + (f"   at most {limit}" if limit else ""))
    cost = seconds_for_events(sys.argv[1])
    late += cost > 2
    print(f"{EVENTS} events into dicts   {cost:8.2f} s    at most 2")
    return late


if __name__ == "__main__":
    sys.exit(main())
