import type { Fact } from "../format/facts";

/** Names with their values. */
export function FactList({ facts }: { facts: Fact[] }) {
  return (
    <dl class="facts">
      {facts.map((fact) => (
        <div key={fact.key}>
          <dt>{fact.label}</dt>
          <dd>{fact.text}</dd>
        </div>
      ))}
    </dl>
  );
}
