"""What is measured, how its process is started, and what it is held against."""

import json
import os
import shutil
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path

PEERS = Path(__file__).parent.parent / "peers"
DUCKDB = "@duckdb/node-api@1.5.6-r.1"
PYTHONS = ("/usr/bin/python3", sys.executable)  # the system's has the system's packages


class Failed(Exception):
    """One line for people."""


@dataclass(frozen=True)
class Measure:
    """A process that takes one measure and prints it as a line of JSON."""

    name: str
    command: tuple = ()  # before the arguments; empty: `bench_measure NAME`
    against: tuple = ()
    data: str = ""  # the files that it reads: graphml or tables
    counts_allocations: bool = False
    folder: str = "."  # where it runs
    options: tuple = ()  # behind the arguments
    once: bool = False  # a single process, since it takes minutes


OURS = (
    Measure("bound", against=("bound",), counts_allocations=True),
    Measure("matchGraphs", against=("bound", "Python dict", "JS Map", "networkx", "SQLite",
                                    "DuckDB", "DuckDB, inside", "sort and comm"),
            counts_allocations=True),
    Measure("compareGraphs", against=("bound", "DuckDB", "DuckDB, inside", "SQLite"),
            counts_allocations=True),
    Measure("viewModels", against=("compareGraphs",), counts_allocations=True),
    Measure("applyFilter", against=("viewModels",)),
    Measure("expat", against=("expat",), data="graphml"),
    Measure("readGraphML", against=("expat",), data="graphml"),
)


def run(command, **options):
    """Returns what the command prints."""
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE, text=True,
                          check=False, **options)
    if done.returncode != 0:
        raise Failed(f"{' '.join(str(word) for word in command)} failed")
    return done.stdout


def succeeds(*command):
    try:
        return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              check=False).returncode == 0
    except OSError:
        return False


def python_with(code):
    return next((python for python in PYTHONS if succeeds(python, "-c", code)), None)


def install_duckdb(folder):
    """Into the build folder, where it stays. Returns whether it is there."""
    package = DUCKDB.rpartition("@")[0]
    if (folder / "node_modules" / package / "package.json").exists():
        return True
    folder.mkdir(parents=True, exist_ok=True)
    return succeeds("npm", "install", "--prefix", str(folder), "--no-audit", "--no-fund", DUCKDB)


def peers(build):
    """Returns the peers whose programs are here, and a line for each of the others."""
    node = shutil.which("node")
    node_folder = build / "node"
    sqlite = python_with("import sqlite3; assert sqlite3.sqlite_version_info >= (3, 39)")
    networkx = python_with("import networkx")
    duckdb = node and install_duckdb(node_folder)
    sort = all(map(shutil.which, ("sort", "comm", "awk"))) and python_with("")
    wanted = (
        ("Python dict", python_with(""), "python_dict.py", "python3"),
        ("JS Map", node, "js_map.mjs", "node"),
        ("networkx", networkx, "networkx_graphs.py", "python3-networkx"),
        ("SQLite", sqlite, "sqlite.py", "a python3 with SQLite 3.39 or newer"),
        ("DuckDB", duckdb and node, "duckdb.mjs", f"node, npm and {DUCKDB} from its registry"),
        ("DuckDB, inside", duckdb and node, "duckdb.mjs inside", "what DuckDB needs"),
        ("sort and comm", sort, "sort_comm.py", "sort, comm and awk"),
    )
    found, missing = [], []
    for name, program, words, needs in wanted:
        script, *options = words.split()
        if program:
            quiet = ("-B",) if script.endswith(".py") else ("--expose-gc",)
            found.append(Measure(name, (program, *quiet, str(PEERS / script)), data="tables",
                                 folder=str(node_folder) if script == "duckdb.mjs" else ".",
                                 options=tuple(options)))
        else:
            missing.append(f"skipped: {name} needs {needs}")
    return found, missing


def whole_processes(build, files):
    """The program, without and with insights, and the same work by scripts."""
    program = str(build / "bin" / "depcompare")
    python = python_with("import networkx")
    wanted = [Measure("depcompare", (program, "-q"), against=("networkx script",)),
              Measure("depcompare with insights", (program, "-q", "--insights", "full"),
                      against=("depcompare", "networkx insights"))]
    if python:
        wanted.append(Measure("networkx script", (python, "-B", str(PEERS / "networkx_graphml.py"))))
    if python and files <= 10_000:  # its time grows with the square
        wanted.append(Measure("networkx insights",
                              (python, "-B", str(PEERS / "networkx_insights.py")), once=True))
    return wanted


def take_whole_process(measure, files):
    """Time and peak memory of a process that compares two GraphML files."""
    with subprocess.Popen([*measure.command, *map(str, files)], stdout=subprocess.PIPE) as process:
        printed = process.stdout.read()
        _, status, used = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
    # The program tells a difference by its exit status.
    if process.returncode != (1 if measure.name.startswith("depcompare") else 0):
        raise Failed(f"{measure.name} ended with {process.returncode}")
    figures = {"cpu_seconds": used.ru_utime + used.ru_stime, "resident_peak": used.ru_maxrss * 1024}
    return figures | ({"counts": json.loads(printed)} if printed else {})
