import { defineConfig } from "vitest/config";

// Makes the pictures of the guide anew: npm run pictures.
export default defineConfig({ test: { include: ["tests/pictures/*.pictures.ts"] } });
