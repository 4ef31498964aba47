interface Props {
  commands: { command: string; does: string }[];
}

/** What is typed on the server, and what comes of it. */
export function CommandList({ commands }: Props) {
  return (
    <ul class="plain stacked">
      {commands.map(({ command, does }) => (
        <li key={command}>
          <code>{command}</code> {does}
        </li>
      ))}
    </ul>
  );
}
