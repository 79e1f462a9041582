import { readdirSync, readFileSync } from "node:fs";
import { join, resolve } from "node:path";
import { expect, test } from "vitest";
import { japanese } from "../../page/words/japanese.ts";

test("every error of the engine's own has Japanese words", () => {
  const folder = resolve(import.meta.dirname, "../../engine");
  const sources = readdirSync(folder).filter((name) => name.endsWith(".cpp")).map((name) => readFileSync(join(folder, name), "utf8"));
  const keys = [...sources.join("\n").matchAll(/\bFault(?:\(| no_scale_for[^{]*\{\s*return \{)"(\w+)"/g)].map(([, key]) => key!);
  expect(new Set(keys)).toEqual(new Set(Object.keys(japanese.engineErrors)));
});
