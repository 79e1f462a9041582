// Texts of a DICOM header in whatever characters it names, the escapes of ISO 2022 among them: PS3.3 C.12.1.1.2. The
// browser's own ISO-2022-JP resets its sets elsewhere than DICOM does, so the escapes are followed here.

/** What the bytes below 0x80 of a text stand for (G0): ISO 646, JIS X 0208, JIS X 0212. */
type LowBytes = "ascii" | "kanji" | "moreKanji";

interface HighSet {
  /** "100" of "ISO_IR 100" and "ISO 2022 IR 100". */
  readonly name: string;
  readonly escape: string;
  /** As TextDecoder calls it, for the bytes from 0x80 on (G1). */
  readonly label: string;
}

const katakana = "katakana"; // of JIS X 0201
const highSets: readonly HighSet[] = [
  { name: "13", escape: ")I", label: katakana },
  { name: "100", escape: "-A", label: "latin1" },
  { name: "101", escape: "-B", label: "iso-8859-2" },
  { name: "109", escape: "-C", label: "iso-8859-3" },
  { name: "110", escape: "-D", label: "iso-8859-4" },
  { name: "144", escape: "-L", label: "iso-8859-5" },
  { name: "127", escape: "-G", label: "iso-8859-6" },
  { name: "126", escape: "-F", label: "iso-8859-7" },
  { name: "138", escape: "-H", label: "iso-8859-8" },
  { name: "148", escape: "-M", label: "iso-8859-9" },
  { name: "203", escape: "-b", label: "iso-8859-15" },
  { name: "166", escape: "-T", label: "tis-620" },
  { name: "149", escape: "$)C", label: "euc-kr" },
  { name: "58", escape: "$)A", label: "gb2312" },
];
const lowSets: readonly { readonly escape: string; readonly low: LowBytes }[] = [
  { escape: "(B", low: "ascii" },
  { escape: "(J", low: "ascii" },
  { escape: "$B", low: "kanji" },
  { escape: "$(D", low: "moreKanji" },
];

/** Sets of several bytes that know no escapes. */
const wholeSets: Readonly<Record<string, string>> = { "ISO_IR 192": "utf-8", GB18030: "gb18030", GBK: "gbk" };

interface CodeSets {
  low: LowBytes;
  high: string | null;
}

function bytesOf(text: string): Uint8Array {
  return Uint8Array.from(text, (letter) => letter.charCodeAt(0));
}

/** What has no place in a set becomes "?". */
function converted(label: string, text: string): string {
  // Browsers take latin1 for Windows' 1252, whose quotes stand where DICOM has nothing.
  if (label === "latin1") return text;
  return new TextDecoder(label).decode(bytesOf(text)).replaceAll("\ufffd", "?");
}

function katakanaText(text: string): string {
  return Array.from(text, (letter) => {
    const code = letter.charCodeAt(0);
    return code < 0xa1 || code > 0xdf ? "?" : String.fromCharCode(0xff61 + code - 0xa1);
  }).join("");
}

/** JIS X 0208 and 0212 are the two sets of EUC-JP, with their high bits set and the second marked. */
function kanjiText(text: string, second: boolean): string {
  let marked = "";
  for (let i = 0; i < text.length; ++i) {
    if (second && i % 2 === 0) marked += "\x8f";
    marked += String.fromCharCode(text.charCodeAt(i) | 0x80);
  }
  return converted("euc-jp", marked);
}

/** Changes the sets as the escape that `text` begins with says; its length, 1 for one that is not known. */
function followEscape(text: string, sets: CodeSets): number {
  const rest = text.slice(1, 4);
  for (const set of lowSets) {
    if (!rest.startsWith(set.escape)) continue;
    sets.low = set.low;
    return 1 + set.escape.length;
  }
  for (const set of highSets) {
    if (!rest.startsWith(set.escape)) continue;
    sets.high = set.label;
    return 1 + set.escape.length;
  }
  return 1;
}

/** The first of several sets holds from the start of each part of a text. */
function firstSets(characterSets: string): CodeSets {
  const first = characterSets.split("\\")[0] ?? "";
  const number = first.includes(" ") ? first.slice(first.lastIndexOf(" ") + 1) : "";
  return { low: "ascii", high: highSets.find((set) => set.name === number)?.label ?? null };
}

/** `text` has a character for each byte; `characterSets` is that of (0008,0005), "\\ISO 2022 IR 87". */
export function textOfDicom(text: string, characterSets: string): string {
  const whole = wholeSets[characterSets];
  if (whole) return converted(whole, text);
  let sets = firstSets(characterSets);
  let words = "";
  const isHigh = (at: number): boolean => text.charCodeAt(at) >= 0x80;
  // Parts of a name begin anew; among kanji these are bytes like all others.
  const endsPart = (at: number): boolean => sets.low === "ascii" && /[\^=\\]/.test(text.charAt(at));
  for (let at = 0; at < text.length; ) {
    if (text[at] === "\x1b") {
      at += followEscape(text.slice(at), sets);
      continue;
    }
    if (endsPart(at)) {
      words += text.charAt(at++);
      sets = firstSets(characterSets);
      continue;
    }
    const high = isHigh(at);
    let end = at;
    while (end < text.length && text[end] !== "\x1b" && isHigh(end) === high && !endsPart(end)) ++end;
    const run = text.slice(at, end);
    at = end;
    if (high) words += sets.high === katakana ? katakanaText(run) : sets.high ? converted(sets.high, run) : run.replace(/./gs, "?");
    else words += sets.low === "ascii" ? run : kanjiText(run, sets.low === "moreKanji");
  }
  return words;
}
