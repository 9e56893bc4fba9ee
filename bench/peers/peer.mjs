// What the peers in JavaScript share: the generated tables, and the figures of a piece of work.
import { readFileSync, writeFileSync } from "node:fs";

export const sides = ["left", "right"];
export const properties = ["checksum", "language", "lines", "module", "owner", "size"];

export function tablePath(folder, side, files, table) {
    return `${folder}/${side}-${files}.${table}.tsv`;
}

export function rows(path) {
    return readFileSync(path, "ascii").trimEnd().split("\n").map((line) => line.split("\t"));
}

// Bytes; VmRSS for now, VmHWM for the most so far.
function resident(field) {
    const status = readFileSync("/proc/self/status", "ascii");
    return Number(status.match(new RegExp(`^${field}:\\s+(\\d+)`, "m"))[1]) * 1024;
}

// Removed, added, common and, of these, changed.
function listed({ removed = 0, added = 0, unchanged = 0, changed = 0 }) {
    return [removed, added, Number(unchanged) + Number(changed), changed].map(Number);
}

// Loads, works and prints the figures of the work alone as one line of JSON. `work` returns the
// edits of `files` and of `groups`: how many are removed, added, unchanged and changed.
export async function run(load, work) {
    const [folder, number] = process.argv.slice(2);
    const loaded = await load(folder, number);
    globalThis.gc?.();
    // 5 makes the peak start again from what is resident now.
    writeFileSync("/proc/self/clear_refs", "5");
    const before = resident("VmRSS");
    const wall = performance.now();
    const cpu = process.cpuUsage();
    const { files, groups } = await work(loaded);
    const used = process.cpuUsage(cpu);
    console.log(JSON.stringify({
        cpu_seconds: (used.user + used.system) / 1e6,
        wall_seconds: (performance.now() - wall) / 1e3,
        resident_peak: Math.max(0, resident("VmHWM") - before),
        counts: { files: listed(files), groups: listed(groups) },
    }));
}
