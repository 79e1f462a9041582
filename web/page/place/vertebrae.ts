// Points of the third and fourth cervical vertebra, which a bone age is made from; the order in which they are placed.
export const vertebrae = [
  "C3ua", "C3la", "C3lp", "C3up", "C4ua", "C4la", "C4lp", "C4up", "C3da", "C3dp", "C4da", "C4dp",
] as const;

export function isVertebra(name: string): boolean {
  return (vertebrae as readonly string[]).includes(name);
}
