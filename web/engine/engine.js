// The module's bytes and the documents of the landmarks lie in scripts that the build writes: nothing is fetched.
import createModule from "../../build/engine/web/engine/module.mjs";
import packed from "../../build/engine/web/engine/wasm.mjs";
import documents from "../../build/engine/web/engine/landmarks.mjs";
import { engineOf } from "./calls.js";

export { EngineError } from "./answer.js";
export { RowState } from "./row_state.js";

export async function loadEngine() {
  const bytes = Uint8Array.from(atob(packed), (character) => character.charCodeAt(0));
  const unpacked = new Blob([bytes]).stream().pipeThrough(new DecompressionStream("gzip"));
  const wasmBinary = new Uint8Array(await new Response(unpacked).arrayBuffer());
  return engineOf(await createModule({ wasmBinary }), documents);
}
