// What takes long on a large machine is done piece by piece, so that the page draws in between.

export const nextTask = (): Promise<void> => new Promise((resolve) => window.setTimeout(resolve));
