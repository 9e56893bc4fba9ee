"""Pairs two graphs with SQLite's FULL OUTER JOIN.

In memory before the clock starts: a database with two tables a side; files have their ID as primary
key, so its index is there already.
Timed: the groups of each side into a table with both ends as key, lists of the pairs with what
became of each, and counts.
"""

import sqlite3
from collections import Counter

import peer

CONTENT = ("type", "upstream_component", "upstream_type", "downstream_component", "downstream_type")
FILES = ("name", "type", *peer.PROPERTIES)


def listed(columns, text, separator=", "):
    return separator.join(text.format(column) for column in columns)


def pairs(table, key, content):
    """A query for the pairs; the last column says what became of each."""
    return f"""
SELECT {listed(key, "l.{0} AS left_{0}, r.{0} AS right_{0}")},
       CASE WHEN r.{key[0]} IS NULL THEN 'removed' WHEN l.{key[0]} IS NULL THEN 'added'
            WHEN ({listed(content, "l.{}")}) = ({listed(content, "r.{}")}) THEN 'unchanged'
            ELSE 'changed' END AS edit
FROM left_{table} l FULL OUTER JOIN right_{table} r
  ON {listed(key, "l.{0} = r.{0}", " AND ")}"""


def groups(side):
    """A table of a side's groups; equal groups have equal contents, in one order."""
    return f"""
INSERT INTO {side}_groups
SELECT upstream, downstream, group_concat(content, x'0a')
FROM (SELECT upstream, downstream, {listed(CONTENT, "{}", " || x'09' || ")} AS content
      FROM {side}_dependencies ORDER BY 1, 2, 3)
GROUP BY upstream, downstream"""


def load(tables):
    database = sqlite3.connect(":memory:")
    database.execute("PRAGMA temp_store = MEMORY")
    for side in peer.SIDES:
        for table, columns in (("files", ("id", *FILES)),
                               ("dependencies", ("upstream", "downstream", *CONTENT))):
            key = "PRIMARY KEY" if table == "files" else ""
            rest = listed(columns[1:], "{} TEXT NOT NULL")
            database.execute(
                f"CREATE TABLE {side}_{table} ({columns[0]} TEXT NOT NULL {key}, {rest})")
            database.executemany(f"INSERT INTO {side}_{table} VALUES ({listed(columns, '?')})",
                                 tables.rows(side, table))
    database.commit()
    return database


def work(database):
    for side in peer.SIDES:
        database.execute(f"CREATE TEMP TABLE {side}_groups (upstream, downstream, content,"
                         " PRIMARY KEY (upstream, downstream)) WITHOUT ROWID")
        database.execute(groups(side))
    queries = (pairs("files", ("id",), FILES),
               pairs("groups", ("upstream", "downstream"), ("content",)))
    return [Counter(pair[-1] for pair in database.execute(query).fetchall())
            for query in queries]


if sqlite3.sqlite_version_info < (3, 39):
    raise SystemExit(f"SQLite {sqlite3.sqlite_version} has no FULL OUTER JOIN")
peer.run(load, work)
