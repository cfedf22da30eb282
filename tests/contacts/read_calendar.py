#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Reads an iCalendar file with python3-icalendar, as calendar programs do,
and prints one JSON object per event: its fields, and for each date given
on the command line the first time the event repeats after that date
(expanded by dateutil, the recurrence engine icalendar builds on)."""
import datetime
import json
import sys

import icalendar
from dateutil import rrule

with open(sys.argv[1], "rb") as f:
    calendar = icalendar.Calendar.from_ical(f.read())
after = [datetime.datetime.fromisoformat(d) for d in sys.argv[2:]]
for event in calendar.walk("VEVENT"):
    start = event.decoded("DTSTART")
    assert isinstance(start, datetime.date) and not isinstance(start, datetime.datetime)
    rule = rrule.rrulestr(event["RRULE"].to_ical().decode(),
                          dtstart=datetime.datetime.combine(start, datetime.time()))
    print(json.dumps({
        "uid": str(event["UID"]),
        "summary": str(event["SUMMARY"]),
        "description": str(event["DESCRIPTION"]),
        "start": start.isoformat(),
        "end": event.decoded("DTEND").isoformat(),
        "next": [rule.after(d).date().isoformat() for d in after],
    }, ensure_ascii=False))
