#ifndef MIRN_CATALOGUE_CATALOGUE_FORM_H
#define MIRN_CATALOGUE_CATALOGUE_FORM_H

#include "route_row.h"
#include "ServiceObject.h"

/// The catalogue as a value. A member that does not apply is not there.

/// An object with `errorId`, `words` and `kind` (as `toText` of a refusal's kind).
ovra::data_transfer::ServiceObject formOf(const RefusalRow& row);

/// An object:
/// - `id`, `method` ("GET"), `key` (the handled path), `path` (the template:
///   "mirn/volumes/{volumeId}/rebuild"), `summary`, `description`, `effect`, `role`: texts.
/// - `noun`, `verb`: the words by which it is asked for on a command line; the noun may be empty.
/// - `arguments`: a list with `name` and `refersTo` for each name in the path, in their order.
/// - `query`, `body`: lists of fields in the order in which they are judged, each with `name`, `type`
///   ("text", "number", "boolean" or "list"), `required` (where its condition holds), `help`; `words` (a
///   list), `least` and `most`, `unit`, `refersTo` (a type of object), `candidates` (`from`, `of`,
///   `usages`), `when` (see below).
/// - `bodyRule`: "ignored", "none" (there must be none) or "fields"; `anyQuery`: true where the query
///   is ignored.
/// - `answer`: `schema` and `list`; of a list `columns`, the fields that a table shows, in order.
/// - `refusals`: those of this route's own.
/// - `operations`: the library's functions, of which a request calls one; their statuses refuse, too.
/// - `effects`: a list with `fate` ("comes", "changes", "goes" or "overwritten"), `type`, `argument`,
///   `relation`, `text`, `when`, `where` and `except` as `EffectRow` tells them, and `becomes`: the arguments
///   that tell what the object is then, under `level`, `size`, `disks` and `array`, and `fillsArray`.
/// - `work`: a list with `kind`, `on` (an argument) and `when`.
///
/// `when` is an object with `field`, which must be there, and `word`, which it must hold.
ovra::data_transfer::ServiceObject formOf(const RouteRow& row);

#endif
