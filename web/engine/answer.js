// @ts-check
// What the module answers: JSON, or "!" and an error.

/** See engine.d.ts. */
export class EngineError extends Error {
  /** @param {{ message: string } & Record<string, unknown>} told */
  constructor({ message, ...where }) {
    super(message);
    this.name = "EngineError";
    Object.assign(this, { key: "", names: [] }, where);
  }
}

/**
 * @param {string} answer
 * @returns {any} of the type that engine.d.ts promises
 */
export function told(answer) {
  if (answer.startsWith("!")) throw new EngineError(JSON.parse(answer.slice(1)));
  return JSON.parse(answer);
}
