// A page of any size, made from a small one by putting other data into it.
import { deflateSync, inflateSync } from "node:zlib";

/** @param {number[]} numbers */
function packedNumbers(numbers) {
  const bytes = [];
  for (let number of numbers) {
    for (; number > 0x7f; number >>>= 7) {
      bytes.push((number & 0x7f) | 0x80);
    }
    bytes.push(number);
  }
  return Buffer.from(bytes);
}

/**
 * Files in folders of 50, each with `groupsOfFile` groups; every seventh entry is added, removed or
 * changed, and every choice of filters shows everything.
 *
 * @param {string} page
 * @param {number} files
 * @param {number} groupsOfFile
 */
export function largePage(page, files, groupsOfFile) {
  const ids = Array.from({ length: files }, (_, i) =>
      `src/module${Math.floor(i / 5000)}/part${Math.floor(i / 50)}/file${i}.cc`);
  const groups = files * groupsOfFile;
  const entries = 1 + files + groups;
  const [, packing, letters] = page.match(/id="data-head" data-packing="([a-z]*)">([^<]*)</);
  const packed = Buffer.from(letters, "base64");
  const head = JSON.parse((packing === "plain" ? packed : inflateSync(packed)).toString());
  Object.assign(head, { files, groups, nodes: files, types: ["file"], blocks: [0] });
  const columns = {
    entries: Buffer.from(Array.from({ length: entries }, (_, i) => (i % 7 < 3 ? i % 7 : 3) | 0xf0)),
    changes: packedNumbers(Array.from({ length: 3 * entries }, (_, i) => i % 3)),
    "group-counts": packedNumbers(Array(files).fill(groupsOfFile)),
    targets: packedNumbers(Array.from({ length: groups }, (_, i) => (i * 7919) % files)),
    ids: Buffer.from(ids.join("")),
    "id-lengths": packedNumbers(ids.map((id) => id.length)),
    names: Buffer.alloc(0),
    "name-lengths": packedNumbers(Array(files).fill(0)),
    types: packedNumbers(Array(files).fill(0)),
    head: Buffer.from(JSON.stringify(head)),
    "block-0": Buffer.from(JSON.stringify(Array(entries).fill([null, []]))),
  };
  return Object.entries(columns).reduce((made, [name, bytes]) => made.replace(
      new RegExp(`id="data-${name}" data-packing="[a-z]*">[^<]*<`),
      () => `id="data-${name}" data-packing="deflate">${deflateSync(bytes).toString("base64")}<`), page);
}
