/** Without the sign that a negative number keeps when it rounds to zero. */
export function fixed(value: number, digits: number): string {
  return value.toFixed(digits).replace(/^-(?=[0.]*$)/, "");
}

export function signed(value: number, digits: number): string {
  const text = fixed(value, digits);
  return value > 0 && /[1-9]/.test(text) ? `+${text}` : text;
}
