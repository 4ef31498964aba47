import type { ComponentChildren } from "preact";

export interface Column<Item> {
  name: string;
  cell: (item: Item) => ComponentChildren;
  isNumber?: boolean;
}

interface Props<Item> {
  caption: string;
  columns: Column<Item>[];
  items: Item[];
  keyOf: (item: Item) => string | number;
}

/** Rows and columns; on a narrow window each row stands by itself, its cells behind their names. */
export function DataTable<Item>({ caption, columns, items, keyOf }: Props<Item>) {
  // The roles stand in words, since a browser forgets them of what is not laid out as a table.
  return (
    <table role="table" aria-label={caption}>
      <thead role="rowgroup">
        <tr role="row">
          {columns.map((column) => (
            <th key={column.name} role="columnheader" scope="col" class={column.isNumber ? "number" : undefined}>
              {column.name}
            </th>
          ))}
        </tr>
      </thead>
      <tbody role="rowgroup">
        {items.map((item) => (
          <tr key={keyOf(item)} role="row" data-row={keyOf(item)}>
            {columns.map((column) => (
              <td key={column.name} role="cell" data-name={column.name} class={column.isNumber ? "number" : undefined}>
                <span>{column.cell(item)}</span>
              </td>
            ))}
          </tr>
        ))}
      </tbody>
    </table>
  );
}
