/** As wide as it tells, by the object model: the page's policy takes no styles in its text. */
export function grow(piece: HTMLElement | null, bytes: number): void {
  if (piece) piece.style.flexGrow = String(Math.max(bytes / 1e9, 1));
}
