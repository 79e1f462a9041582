// @ts-check
import { told } from "./answer.js";

/** @import { Analysis, AnalysisFolder, DisplayMode, Population, Problem } from "./engine.js" */

/**
 * @param {any} raw the module
 * @param {number} id
 * @returns {AnalysisFolder}
 */
export function folderOf(raw, id) {
  /** @type {{ problems: Problem[], analyses: Analysis[], families: { base: number, variants: number[] }[], modes: DisplayMode[] }} */
  const { problems, analyses, families, modes } = told(raw.folder(id));
  const numbered = new Map(analyses.map((analysis) => [analysis.id, Object.assign(analysis, { variants: [] })]));
  const bases = families.map(({ base, variants }) =>
    Object.assign(/** @type {Analysis} */ (numbered.get(base)), { variants: variants.map((variant) => numbered.get(variant)) }),
  );
  return {
    id,
    problems,

    analyses(kind) {
      return bases.filter((analysis) => analysis.caseKind === kind);
    },

    modes(kind) {
      return modes.filter((mode) => mode.kind === kind);
    },

    populations(kind) {
      /** @type {Map<string, Population>} */
      const named = new Map();
      for (const { population } of this.analyses(kind).flatMap((analysis) => [analysis, ...analysis.variants]))
        if (population) named.set(population.name, population);
      return [...named.values()].sort((a, b) => (a.name < b.name ? -1 : 1));
    },

    delete() {
      told(raw.close(id));
    },
  };
}
