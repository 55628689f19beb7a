"""Counts the events of a database by the hour: python3 events_per_hour.py site.db [action]

With matplotlib it writes a picture, events.png; without, bars of text.
"""

import sys
from collections import Counter
from datetime import datetime, timedelta
from typing import List, Optional, Tuple

import orvactions as orv


def hour_of(time: datetime) -> datetime:
    """The begin of the hour on the local clock."""
    return time.astimezone().replace(minute=0, second=0, microsecond=0)


def per_hour(path: str, name: Optional[str]) -> List[Tuple[datetime, int]]:
    """Every hour from the first event to the last, in local time, with the number of its events."""
    with orv.events.open(path) as events:
        counts = Counter(hour_of(event.stored) for event in events.select(name=name))
    hours: List[Tuple[datetime, int]] = []
    hour = min(counts, default=None)
    while hour is not None and hour <= max(counts):
        hours.append((hour, counts[hour]))
        hour = hour_of(hour + timedelta(hours=1))  # the clock may have been moved, by half an hour even
    return hours


def show(hours: List[Tuple[datetime, int]]) -> None:
    most = max((count for _, count in hours), default=1)
    for hour, count in hours:
        print(f"{hour:%Y-%m-%d %H:00} {count:6} {'#' * round(50 * count / most)}")


def draw(hours: List[Tuple[datetime, int]], path: str) -> bool:
    try:
        from matplotlib import pyplot  # type: ignore
    except ImportError:
        return False
    pyplot.bar([hour for hour, _ in hours], [count for _, count in hours], width=1 / 25)
    pyplot.ylabel("events per hour")
    pyplot.gcf().autofmt_xdate()
    pyplot.savefig(path)
    return True


if __name__ == "__main__":
    found = per_hour(sys.argv[1], sys.argv[2] if len(sys.argv) > 2 else None)
    if draw(found, "events.png"):
        print("events.png")
    else:
        show(found)
