#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Talks to evolution-data-server through its own client libraries (GObject
introspection), as GNOME's apps do.

  eds_helper.py add-contacts VCARD...   adds cards to the built-in address book
  eds_helper.py add-many COUNT DATED   adds COUNT made-up people in one call, the
                                        first DATED of them with a birthday
  eds_helper.py modify-contact VCARD    replaces the card with the same UID
  eds_helper.py remove-contact UID      removes a card from the built-in book
  eds_helper.py calendar-events UID     prints the events of the calendar source
                                        UID, one JSON object per line
"""
import json
import sys
import time

import gi

gi.require_version("EDataServer", "1.2")
from gi.repository import EDataServer  # noqa: E402


def builtin_book():
    gi.require_version("EBook", "1.2")
    gi.require_version("EBookContacts", "1.2")
    from gi.repository import EBook, EBookContacts

    registry = EDataServer.SourceRegistry.new_sync(None)
    book = EBook.BookClient.connect_sync(registry.ref_builtin_address_book(), 1, None)
    return book, EBookContacts


def add_contacts(cards):
    book, contacts = builtin_book()
    for card in cards:
        contact = contacts.Contact.new_from_vcard(card)
        book.add_contact_sync(contact, contacts.BookOperationFlags.NONE, None)


def add_many(count, dated):
    book, contacts = builtin_book()
    people = []
    for i in range(count):
        card = f"BEGIN:VCARD\r\nVERSION:3.0\r\nUID:person-{i}\r\nFN:Person {i}\r\n"
        if i < dated:
            card += f"BDAY:{1930 + i % 90}-{1 + i % 12:02d}-{1 + i % 28:02d}\r\n"
        people.append(contacts.Contact.new_from_vcard(card + "END:VCARD\r\n"))
    book.add_contacts_sync(people, contacts.BookOperationFlags.NONE, None)


def modify_contact(card):
    book, contacts = builtin_book()
    contact = contacts.Contact.new_from_vcard(card)
    book.modify_contact_sync(contact, contacts.BookOperationFlags.NONE, None)


def remove_contact(uid):
    book, contacts = builtin_book()
    book.remove_contact_by_uid_sync(uid, contacts.BookOperationFlags.NONE, None)


def calendar_events(uid):
    gi.require_version("ECal", "2.0")
    from gi.repository import ECal

    registry = EDataServer.SourceRegistry.new_sync(None)
    # The registry notices a new .source file within a moment.
    for _ in range(100):
        source = registry.ref_source(uid)
        if source is not None:
            break
        time.sleep(0.1)
    if source is None:
        sys.exit("no calendar source " + uid)
    client = ECal.Client.connect_sync(source, ECal.ClientSourceType.EVENTS, 1, None)
    ok, components = client.get_object_list_as_comps_sync("#t", None)
    for component in components:
        start = component.get_dtstart().get_value()
        print(json.dumps({
            "uid": component.get_uid(),
            "summary": component.get_summary().get_value(),
            "start": "%04d-%02d-%02d" % (start.get_year(), start.get_month(), start.get_day()),
            "allDay": start.is_date(),
            "rrule": [r.to_string() for r in component.get_rrules()],
        }, ensure_ascii=False))


if __name__ == "__main__":
    if sys.argv[1] == "add-contacts":
        add_contacts(sys.argv[2:])
    elif sys.argv[1] == "add-many":
        add_many(int(sys.argv[2]), int(sys.argv[3]))
    elif sys.argv[1] == "modify-contact":
        modify_contact(sys.argv[2])
    elif sys.argv[1] == "remove-contact":
        remove_contact(sys.argv[2])
    elif sys.argv[1] == "calendar-events":
        calendar_events(sys.argv[2])
