// Pairs two graphs with DuckDB's FULL OUTER JOIN.
//
// In memory before the clock starts: a database with two tables a side.
// Timed: arrays of the pairs with what became of each, and counts; with the word "inside" the pairs
// become tables of the database instead, where other queries may go on with them. One thread, as
// everything else here has; more of them shorten the time on the clock, not the CPU time.
import { createRequire } from "node:module";

import { properties, run, sides, tablePath } from "./peer.mjs";

// Installed for the benchmarks alone, beside their data.
const { DuckDBInstance } = createRequire(`${process.cwd()}/`)("@duckdb/node-api");

const files = ["name", "type", ...properties];
const content = ["type", "upstream_component", "upstream_type", "downstream_component",
    "downstream_type"];
const record = (side, columns) => `ROW(${columns.map((column) => `${side}.${column}`).join(", ")})`;

const inside = process.argv.slice(4).includes("inside");

// The last column says what became of each pair.
const pairFiles = `
SELECT l.id AS left_id, r.id AS right_id,
       CASE WHEN r.id IS NULL THEN 'removed' WHEN l.id IS NULL THEN 'added'
            WHEN ${record("l", files)} = ${record("r", files)} THEN 'unchanged'
            ELSE 'changed' END AS edit
FROM left_files l FULL OUTER JOIN right_files r ON l.id = r.id`;

// A group on both sides is changed where one of its dependencies is on one side only.
const pairGroups = `
SELECT upstream, downstream,
       CASE WHEN count(r.type) = 0 THEN 'removed' WHEN count(l.type) = 0 THEN 'added'
            WHEN count(l.type) = count(*) AND count(r.type) = count(*) THEN 'unchanged'
            ELSE 'changed' END AS edit
FROM left_dependencies l FULL OUTER JOIN right_dependencies r
  USING (upstream, downstream, ${content.join(", ")})
GROUP BY upstream, downstream`;

async function load(folder, number) {
    const database = await (await DuckDBInstance.create(":memory:")).connect();
    await database.run("SET threads = 1");
    for (const side of sides) {
        for (const [table, columns] of [["files", ["id", ...files]],
            ["dependencies", ["upstream", "downstream", ...content]]]) {
            const types = columns.map((column) => `'${column}': 'VARCHAR'`).join(", ");
            await database.run(`CREATE TABLE ${side}_${table} AS SELECT * FROM read_csv(
                '${tablePath(folder, side, number, table)}', delim = '\\t', header = false,
                quote = '', escape = '', nullstr = 'NULL', columns = {${types}})`);
        }
    }
    return database;
}

async function countsInside(database, query) {
    await database.run(`CREATE OR REPLACE TABLE pairs AS ${query}`);
    const counted = "SELECT edit, count(*) FROM pairs GROUP BY edit";
    return Object.fromEntries((await database.runAndReadAll(counted)).getRows());
}

async function counts(database, query) {
    const edits = {};
    for (const pair of (await database.runAndReadAll(query)).getRows()) {
        const edit = pair.at(-1);
        edits[edit] = (edits[edit] ?? 0) + 1;
    }
    return edits;
}

async function work(database) {
    const count = inside ? countsInside : counts;
    return { files: await count(database, pairFiles), groups: await count(database, pairGroups) };
}

await run(load, work);
