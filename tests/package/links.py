#!/usr/bin/env python3
"""Fails if a page below FOLDER links to a file that is not there. usage: links.py FOLDER"""
import re
import sys
from pathlib import Path

pages = list(Path(sys.argv[1]).rglob("*.md"))
dead = [f"{page}: {place}" for page in pages
        for place in re.findall(r"\]\((?!https?:)([^)#]+)", page.read_text(encoding="utf-8"))
        if not (page.parent / place).exists()]
sys.exit("\n".join(dead if pages else ["no page"]) or 0)
