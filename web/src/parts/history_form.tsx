import { useState } from "preact/hooks";
import type { Field } from "../api/document";
import type { Role } from "../api/schema";
import { objectsOf } from "../live/objects";
import type { Filter } from "../live/history_filter";
import type { Machine } from "../live/picture";
import { messages } from "../messages/messages";
import { FilterInput } from "./filter_input";

interface Props {
  fields: Field[];
  filter: Filter;
  machine: Machine | null;
  role: Role;
  onFilter: (filter: Filter) => void;
}

/** By what the history is narrowed: all that its operation takes. */
export function HistoryForm({ fields, filter, machine, role, onFilter }: Props) {
  const [values, setValues] = useState(filter);
  const type = values["objectType"];
  const objects = machine && type ? objectsOf(machine, type) : [];
  const change = (name: string, value: string): void =>
    // An id is one of its type's.
    setValues({ ...values, [name]: value, ...(name === "objectType" ? { objectId: "" } : {}) });
  const submit = (event: Event): void => {
    event.preventDefault();
    onFilter(values);
  };
  return (
    <form class="card stacked" onSubmit={submit} aria-label={messages.history.filter}>
      <div class="filters">
        {fields.map((field) => (
          <FilterInput
            key={field.name}
            field={field}
            value={values[field.name] ?? ""}
            choices={
              field.name === "objectId" && objects.length > 0
                ? objects.map(({ id, name }) => ({ value: id, name }))
                : null
            }
            role={role}
            onValue={(value) => change(field.name, value)}
          />
        ))}
      </div>
      <div class="locate">
        <button type="submit" class="primary">
          {messages.history.show}
        </button>
        <button
          type="button"
          onClick={() => {
            setValues({});
            onFilter({});
          }}
        >
          {messages.history.all}
        </button>
      </div>
    </form>
  );
}
