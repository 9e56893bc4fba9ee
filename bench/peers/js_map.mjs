// Pairs two graphs with JavaScript's Map.
//
// In memory before the clock starts: a side's files as an array of objects, and its dependencies as
// an array of objects that share the files' ID strings.
// Timed: files and groups by ID into Maps, an array of the pairs with what became of each, and
// counts.
import { properties, rows, run, sides, tablePath } from "./peer.mjs";

const content = ["type", "upstreamComponent", "upstreamType", "downstreamComponent",
    "downstreamType"];

function loadSide(folder, side, number) {
    const ids = new Map();
    const files = rows(tablePath(folder, side, number, "files")).map(([id, name, type, ...values]) => {
        ids.set(id, id);
        const file = { id, name, type };
        properties.forEach((key, i) => { file[key] = values[i]; });
        return file;
    });
    const dependencies = rows(tablePath(folder, side, number, "dependencies"))
        .map(([upstream, downstream, type, upstreamComponent, upstreamType, downstreamComponent,
            downstreamType]) => ({
            upstream: ids.get(upstream), downstream: ids.get(downstream), type, upstreamComponent,
            upstreamType, downstreamComponent, downstreamType,
        }));
    return { files, dependencies };
}

function filesByID(files) {
    return new Map(files.map((file) => [file.id, file]));
}

// By the upstream ID, then by the downstream ID.
function groupsByEnds(dependencies) {
    const groups = new Map();
    for (const dependency of dependencies) {
        let targets = groups.get(dependency.upstream);
        if (targets === undefined) {
            groups.set(dependency.upstream, targets = new Map());
        }
        const group = targets.get(dependency.downstream);
        if (group === undefined) {
            targets.set(dependency.downstream, [dependency]);
        } else {
            group.push(dependency);
        }
    }
    return groups;
}

function filesDiffer(left, right) {
    return left.name !== right.name || left.type !== right.type ||
        properties.some((key) => left[key] !== right[key]);
}

function dependenciesDiffer(left, right) {
    for (const key of content) {
        if (left[key] !== right[key]) {
            return true;
        }
    }
    return false;
}

function byContent(a, b) {
    for (const key of content) {
        if (a[key] !== b[key]) {
            return a[key] < b[key] ? -1 : 1;
        }
    }
    return 0;
}

function groupsDiffer(left, right) {
    if (left.length !== right.length) {
        return true;
    }
    if (left.length > 1) {
        left.sort(byContent);
        right.sort(byContent);
    }
    return left.some((dependency, i) => dependenciesDiffer(dependency, right[i]));
}

// Adds the pairs of two Maps to `pairs`.
function pair(pairs, left, right, differ) {
    for (const [key, item] of left) {
        const other = right.get(key);
        if (other === undefined) {
            pairs.push({ left: item, right: null, edit: "removed" });
        } else {
            const edit = differ(item, other) ? "changed" : "unchanged";
            pairs.push({ left: item, right: other, edit });
        }
    }
    for (const [key, item] of right) {
        if (!left.has(key)) {
            pairs.push({ left: null, right: item, edit: "added" });
        }
    }
}

function counts(pairs) {
    const edits = {};
    for (const { edit } of pairs) {
        edits[edit] = (edits[edit] ?? 0) + 1;
    }
    return edits;
}

function work([left, right]) {
    const files = [];
    pair(files, filesByID(left.files), filesByID(right.files), filesDiffer);

    const groups = [];
    const none = new Map();
    const leftGroups = groupsByEnds(left.dependencies);
    const rightGroups = groupsByEnds(right.dependencies);
    for (const [upstream, targets] of leftGroups) {
        pair(groups, targets, rightGroups.get(upstream) ?? none, groupsDiffer);
    }
    for (const [upstream, targets] of rightGroups) {
        if (!leftGroups.has(upstream)) {
            pair(groups, none, targets, groupsDiffer);
        }
    }
    return { files: counts(files), groups: counts(groups) };
}

await run((folder, number) => sides.map((side) => loadSide(folder, side, number)), work);
