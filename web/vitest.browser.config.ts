import { defineConfig } from "vitest/config";

// What a person does, in a real browser: one file after the other, since they share the machine's two cores.
export default defineConfig({
  test: { include: ["tests/browser/*.browser.ts"], fileParallelism: false, testTimeout: 120_000, hookTimeout: 180_000 },
});
