// How many pixels of the screen a pixel of the page has; that changes by zooming and on another screen.

/** Calls `changed` after each change. */
export function watchSharpness(changed: () => void): void {
  const watch = (): void =>
    matchMedia(`(resolution: ${devicePixelRatio}dppx)`).addEventListener(
      "change",
      () => {
        changed();
        watch();
      },
      { once: true },
    );
  watch();
}
