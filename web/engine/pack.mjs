// node pack.mjs FOLDER ENGLISH JAPANESE: writes as scripts into the folder what the page can't fetch: module.wasm, gzip in
// base64, as wasm.mjs; the documents of the landmarks as landmarks.mjs.
import { readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { gzipSync } from "node:zlib";

const [folder, ...documents] = process.argv.slice(2);
const packed = gzipSync(readFileSync(join(folder, "module.wasm")), { level: 9 });
writeFileSync(join(folder, "wasm.mjs"), `export default "${packed.toString("base64")}";\n`);
const [en, ja] = documents.map((document) => readFileSync(document, "utf8"));
writeFileSync(join(folder, "landmarks.mjs"), `export default ${JSON.stringify({ en, ja })};\n`);
