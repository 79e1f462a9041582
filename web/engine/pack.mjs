// node pack.mjs WASM SCRIPT: writes the bytes of a module as a script that exports them, gzip in base64.
import { readFileSync, writeFileSync } from "node:fs";
import { gzipSync } from "node:zlib";

const [wasm, script] = process.argv.slice(2);
const packed = gzipSync(readFileSync(wasm), { level: 9 });
writeFileSync(script, `export default "${packed.toString("base64")}";\n`);
