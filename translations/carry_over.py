#!/usr/bin/env python3
"""Carries translations over after lupdate, for texts that moved.

lupdate keys a translation on its context (the class) and its source text,
so a text that moves to another class arrives unfinished in the new context
while its old translation stays behind as vanished or obsolete. This fills
each unfinished message with the translation of the same source text found
anywhere else in the file, then drops the messages no source uses any more.

    carry_over.py TS...
"""
import sys
import xml.etree.ElementTree as ET

UNUSED = ("vanished", "obsolete")


def forms(translation):
    return [f.text or "" for f in translation.iter("numerusform")] or [translation.text or ""]


def carry_over(path):
    tree = ET.parse(path)
    root = tree.getroot()
    known = {}
    for message in root.iter("message"):
        translation = message.find("translation")
        if translation.get("type") != "unfinished" and any(t.strip() for t in forms(translation)):
            known.setdefault((message.get("numerus") == "yes", message.findtext("source")),
                             translation)
    carried = 0
    for message in root.iter("message"):
        translation = message.find("translation")
        if translation.get("type") != "unfinished":
            continue
        found = known.get((message.get("numerus") == "yes", message.findtext("source")))
        if found is None:
            continue
        message.remove(translation)
        copy = ET.fromstring(ET.tostring(found))
        copy.attrib.pop("type", None)
        message.append(copy)
        carried += 1
    dropped = 0
    for context in list(root.iter("context")):
        for message in list(context.iter("message")):
            if message.find("translation").get("type") in UNUSED:
                context.remove(message)
                dropped += 1
        if context.find("message") is None:
            root.remove(context)
    tree.write(path, encoding="utf-8", xml_declaration=True)
    print(f"{path}: {carried} carried over, {dropped} unused dropped")


if __name__ == "__main__":
    for name in sys.argv[1:]:
        carry_over(name)
