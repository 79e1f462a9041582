// @ts-check

/** @type {typeof import("./engine.js").RowState} */
export const RowState = Object.freeze({
  heading: 0,
  value: 1,
  text: 2,
  missing: 3,
  noFormula: 4,
  notFinite: 5,
  differsBySex: 6,
  atOnePlace: 7,
  parallel: 8,
  differsByBand: 9,
  noScale: 10,
});
