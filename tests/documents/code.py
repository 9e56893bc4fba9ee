#!/usr/bin/env python3
"""Checks that each block of C++ or CMake in a document is part of one of the files, indented or not.
usage: code.py DOCUMENT FILE..."""
import re
import sys
from pathlib import Path
from textwrap import indent

document, *files = (Path(name).read_text(encoding="utf-8") for name in sys.argv[1:])
blocks = re.findall(r"^```(?:cpp|cmake)\n(.*?)^```$", document, re.M | re.S)
others = [block for block in blocks
          if not any(indent(block, depth * " ") in "\n" + text for text in files for depth in (0, 2, 4))]
for block in others:
    print(f"{sys.argv[1]}: this is in none of the files:\n{block}")
sys.exit(f"{len(others)} of {len(blocks)} blocks differ" if others or not blocks else 0)
