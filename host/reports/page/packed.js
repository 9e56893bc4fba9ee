// Columns of numbers and texts, as the page holds them.

/**
 * @param {string} name
 * @returns {Promise<Uint8Array>}
 */
export async function unpack(name) {
  const held = /** @type {HTMLElement} */ (document.getElementById(`data-${name}`));
  const letters = atob(held.textContent ?? "");
  const bytes = new Uint8Array(letters.length);
  for (let i = 0; i < letters.length; ++i) {
    bytes[i] = letters.charCodeAt(i);
  }
  if (held.dataset.packing === "plain") {
    return bytes;
  }
  const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream("deflate"));
  return new Uint8Array(await new Response(stream).arrayBuffer());
}

/**
 * @param {Uint8Array} bytes
 * @returns {string}
 */
export function decoded(bytes) {
  return new TextDecoder("utf-8", { ignoreBOM: true }).decode(bytes);
}

/**
 * @param {Uint8Array} bytes numbers in groups of seven bits
 * @param {number} count
 * @returns {Int32Array}
 */
export function numbersIn(bytes, count) {
  const numbers = new Int32Array(count);
  let place = 0;
  for (let i = 0; i < count; ++i) {
    let byte = bytes[place++];
    let number = byte & 0x7f;
    for (let shift = 7; byte & 0x80; shift += 7) {
      byte = bytes[place++];
      number |= (byte & 0x7f) << shift;
    }
    numbers[i] = number;
  }
  return numbers;
}

/** Texts stored one after the other. */
export class Texts {
  /**
   * @param {string} letters
   * @param {Int32Array} lengths
   */
  constructor(letters, lengths) {
    this.letters = letters;
    this.ends = lengths;
    for (let i = 1; i < lengths.length; ++i) {
      this.ends[i] += this.ends[i - 1];
    }
  }

  /**
   * @param {number} index
   * @returns {string}
   */
  at(index) {
    return this.letters.slice(index === 0 ? 0 : this.ends[index - 1], this.ends[index]);
  }
}
