#!/usr/bin/env python3
"""Mends the texts that JUCE's LV2 wrapper writes, so that the bundle holds to the standard: mend_texts.py BUNDLE.

Each replacement must find its text: otherwise JUCE writes another one than that of 7.0.5.
"""
# SPDX-License-Identifier: GPL-3.0-or-later

import pathlib
import sys

PROPERTIES = """
plug:Program
\ta rdf:Property ;
\trdfs:label "program" ;
\trdfs:comment "The number of a factory program, from 0." .

plug:StateString
\ta rdf:Property ;
\trdfs:label "state" ;
\trdfs:comment "The plug-in's whole state, in JUCE's Base64." .
"""

REPLACEMENTS = {
    "dsp.ttl": [
        # Nobody's address, and the project that doap speaks of.
        ("\t\tfoaf:homepage <> ;\n", ""),
        ("\t\tfoaf:mbox <> ;\n", ""),
        ("\ta lv2:InstrumentPlugin ;", "\ta lv2:InstrumentPlugin , lv2:Plugin , doap:Project ;"),
        # The standard knows this of ports alone. Hosts take the scale points for the list that they are.
        ("\tlv2:portProperty lv2:enumeration ;\n", ""),
    ],
    # Features and data of the window that the standard counts elsewhere.
    "ui.ttl": [
        ("\t\topts:interface ,\n\t\tui:noUserResize ,\n", "\t\topts:interface ,\n"),
        ("\t\topts:interface ,\n\t\topts:options ;", "\t\topts:options ;"),
    ],
}


def main():
    bundle = pathlib.Path(sys.argv[1])
    for name, replacements in REPLACEMENTS.items():
        text = (bundle / name).read_text(encoding="utf-8")
        for old, new in replacements:
            if old not in text:
                sys.exit(f"{bundle / name} lacks {old!r}: written by another JUCE than 7.0.5? See {__file__}")
            text = text.replace(old, new)
        (bundle / name).write_text(text + (PROPERTIES if name == "dsp.ttl" else ""), encoding="utf-8")


main()
