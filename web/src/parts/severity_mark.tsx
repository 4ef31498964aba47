import type { Severity } from "../api/schema";
import { messages } from "../messages/messages";

/** A shape for each severity, so that none is told by its colour alone. */
const kShapes: Record<Severity, string> = {
  ok: "M12 2a10 10 0 1 0 0 20 10 10 0 0 0 0-20zm-1.500 14.500-4-4 1.500-1.500 2.500 2.500 5.500-5.500 1.500 1.500z",
  info: "M12 2a10 10 0 1 0 0 20 10 10 0 0 0 0-20zm-1.200 4.500h2.400v2.400h-2.400zm0 4h2.400v7h-2.400z",
  warning: "M12 2 1 21h22zm-1.200 7h2.400v6h-2.400zm0 7.500h2.400v2.400h-2.400z",
  unknown:
    "M12 1 1 12l11 11 11-11zm-1.100 15.500h2.300v2.300h-2.300zm2.300-1.500h-2.300c0-3 2.600-3.200 2.600-5 0-.9-.7-1.500-1.600-1.500s-1.600.6-1.700 1.600H8c.1-2.200 1.700-3.800 3.900-3.800 2.300 0 4 1.500 4 3.600 0 2.800-2.700 3.100-2.700 5.100z",
  critical: "M7.500 1h9L23 7.500v9L16.500 23h-9L1 16.500v-9zM7 8.500 10.500 12 7 15.500 8.500 17l3.500-3.500 3.500 3.500 1.500-1.500-3.500-3.500L17 8.500 15.500 7 12 10.500 8.500 7z",
};

export function SeverityMark({ severity, size = 20 }: { severity: Severity; size?: number }) {
  return (
    <svg
      class={`mark mark-${severity}`}
      width={size}
      height={size}
      viewBox="0 0 24 24"
      role="img"
      aria-label={messages.severities[severity]}
    >
      <title>{messages.severities[severity]}</title>
      <path fill-rule="evenodd" d={kShapes[severity]} />
    </svg>
  );
}
