#!/usr/bin/env python3
"""Translates a catalogue into a language that nobody speaks, for tests: each text begins with a
mark, bears accents, and is at least 40 % longer.

    test_language.py EXTRACTED.ts TRANSLATED.ts

Placeholders (%1) and marks of text stay as they are.
"""

import math
import re
import sys
import xml.etree.ElementTree as tree

MARK = "«"
GROWTH = 1.4
ACCENTED = str.maketrans("AEIOUYaeiouycnsz", "ÅÉÎÖÜÝåéîöüýçñšž")
VOWELS = "åéîöüý"
KEPT = re.compile(r"(%\d|%n|%L\d|<[^>]*>|&\w+;)")


def longer(text, length):
    """Doubles vowels one after the other until the text is as long."""
    place = 0
    while len(text) < length:
        found = next((at for at in range(place, len(text)) if text[at] in VOWELS), None)
        if found is None:
            if not any(letter in VOWELS for letter in text):
                return text + "å" * (length - len(text))
            place = 0
            continue
        text = text[:found] + text[found] + text[found:]
        place = found + 2
    return text


def translated(text):
    pieces = KEPT.split(text)
    letters = sum(len(piece) for piece in pieces if not KEPT.fullmatch(piece))
    missing = math.ceil(len(text) * GROWTH) - len(text)
    return MARK + "".join(
        piece if KEPT.fullmatch(piece) or not re.search(r"[^\W\d]", piece)
        else longer(piece.translate(ACCENTED),
                    len(piece) + math.ceil(missing * len(piece) / letters))
        for piece in pieces)


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    catalogue = tree.parse(sys.argv[1])
    catalogue.getroot().set("language", "qps")
    for message in catalogue.iter("message"):
        translation = message.find("translation")
        translation.attrib.pop("type", None)
        translation.text = translated(message.findtext("source"))
    catalogue.write(sys.argv[2], encoding="utf-8", xml_declaration=True)


if __name__ == "__main__":
    main()
