import { kCreate, propertiesOf, type StepProps } from "../live/draft";
import { FieldInput } from "./field_input";

/** All else that the service's document asks for. */
export function CreateProperties({ operation, values, onValues }: StepProps) {
  return (
    <>
      {propertiesOf(operation, values).map((field) => (
        <FieldInput
          key={field.name}
          operation={operation}
          field={field}
          wanted={kCreate}
          values={values}
          onValue={(value) => onValues({ ...values, [field.name]: value })}
        />
      ))}
    </>
  );
}
