// The machine as it was last seen, for parts deep in a page.
import { createContext } from "preact";
import { useContext } from "preact/hooks";
import { kNoPicture, type Picture } from "./picture";

export const PictureContext = createContext<Picture>(kNoPicture);

export const usePicture = (): Picture => useContext(PictureContext);

/** Rises when what may be done may have changed. */
export const revisionOf = (picture: Picture): number => picture.health?.position.structure ?? 0;
