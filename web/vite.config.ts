import { defineConfig } from "vitest/config";
import { noteModules, oneFile } from "./one_file.ts";

const modules = new Set<string>();

// The whole page is one HTML file, so that it can be opened from disk, served, installed and mailed alike.
export default defineConfig({
  root: "page",
  base: "./",
  oxc: { jsx: { runtime: "automatic", importSource: "preact" } },
  build: {
    outDir: "../../build/web",
    emptyOutDir: true,
    target: "es2022",
    assetsInlineLimit: Number.MAX_SAFE_INTEGER,
    cssCodeSplit: false,
    modulePreload: false,
    reportCompressedSize: false,
    chunkSizeWarningLimit: 10_000,
    rolldownOptions: { output: { codeSplitting: false } },
  },
  worker: { format: "iife", plugins: () => [noteModules(modules)] },
  plugins: [noteModules(modules), oneFile(modules)],
  test: { root: ".", include: ["tests/**/*.test.ts"] },
});
