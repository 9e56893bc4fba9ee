#!/usr/bin/env python3
"""Checks every include of the repository against the table of folders in CONTRIBUTING.md.

usage: check.py SOURCE-FOLDER

Each row of the table names a folder (or a pattern of files) and what its files may include besides
their own folder. A file belongs to the longest row that matches it. Includes of other libraries and
of generated headers do not count.
"""
import fnmatch
import re
import subprocess
import sys
from os.path import normpath
from pathlib import Path

root = Path(sys.argv[1]).resolve()
everything = "everything"


def table(document):
    """Returns: by folder or pattern, the patterns that it may include."""
    rows = re.findall(r"^\| (`.*) \|.*\| ([^|]*) \|$", document.read_text(), re.MULTILINE)
    return {
        folder: ["*"] if everything in allowed else re.findall(r"`([^`]+)`", allowed)
        for folders, allowed in rows
        for folder in re.findall(r"`([^`]+)`", folders)
    }


def matches(path, pattern):
    return fnmatch.fnmatch(path, pattern + "*" if pattern.endswith("/") else pattern)


def row_of(path, rows):
    fitting = [row for row in rows if matches(path, row)]
    return max(fitting, key=len, default=None)


def sources():
    try:
        listed = subprocess.run(
            ["git", "-c", f"safe.directory={root}", "-C", root, "ls-files", "-co", "--exclude-standard"],
            check=True, capture_output=True, text=True).stdout.split("\n")
    except (OSError, subprocess.CalledProcessError):
        listed = [str(path.relative_to(root)) for path in root.rglob("*.*")]
    return {path for path in listed
            if path.endswith((".h", ".cpp", ".def")) and not path.startswith("build/") and (root / path).is_file()}


def resolve(source, name, files, bases):
    candidates = [normpath(Path(source).parent / name)] + [base + name for base in bases]
    return next((path for path in candidates if path in files), None)


def main():
    rows = table(root / "CONTRIBUTING.md")
    files = sources()
    # Where the build looks for headers.
    bases = ["", "host/", "bench/", "fuzz/", "tests/"]
    bases += sorted({path[: path.index("include/") + 8] for path in files if "include/" in path})
    faults = []
    checked = 0
    for source in sorted(files):
        row = row_of(source, rows)
        if row is None:
            faults.append(f"{source}: no row of the table has it")
            continue
        for number, line in enumerate((root / source).read_text().splitlines(), 1):
            include = re.match(r'\s*#\s*include\s*(["<])([^">]+)[">]', line)
            target = include and resolve(source, include[2], files, bases)
            if target:
                checked += 1
                if not any(matches(target, allowed) for allowed in [row, *rows[row]]):
                    faults.append(f"{source}:{number}: {row} may not include {target}")
            elif include and include[1] == '"':
                faults.append(f"{source}:{number}: {include[2]} is not in the repository")
    if not checked:
        faults.append("no includes found")
    print("\n".join(faults) or f"{checked} includes of {len(files)} files run the right way")
    return 1 if faults else 0


sys.exit(main())
