#ifndef MIRN_CATALOGUE_ROUTE_ROW_H
#define MIRN_CATALOGUE_ROUTE_ROW_H

#include <cstdint>
#include <string>
#include <vector>

#include "refusal_kind.h"
#include "request_validator.h"
#include "route_id.h"

/// What is told of one route: all that the router, the judgement of requests, documents and hosts need of it.
/// Plain values; the texts live as long as the program.

/// What a request does at worst.
enum class Effect { kRead, kHarmless, kChanges, kDestroys };

/// Who may ask for it.
enum class Role { kObserve, kOperate, kAdminister };

/// How the shape of a request is judged ahead of everything else.
enum class Judgement {
  kQuery,              ///< The query alone; a body is ignored.
  kNoBodyThenQuery,    ///< There must be no body.
  kQueryThenNoBody,    ///< The same, the other way round.
  kBodyThenQuery,      ///< The body by its fields.
  kBodyWithinHandler,  ///< The body by its fields, in the handler; any query passes.
};

/// A condition on a body: it has this member, and with a word, holds that in it. Without a key always true.
struct Condition {
  const wchar_t* key = nullptr;
  const wchar_t* word = nullptr;
};

/// Where a host finds the values that may stand in an argument.
struct Candidates {
  const wchar_t* from = nullptr;  ///< "disk", "array", "level", "strip" or "size"; null: nowhere.
  const wchar_t* of = nullptr;    ///< The argument whose object's controller, engine or free size is meant.
  std::vector<std::wstring> usages = {};  ///< Of disks: one of these.
};

/// The bounds of a number, inclusive. Without bounds `least` is above `most`.
struct Range {
  std::int64_t least = 0;
  std::int64_t most = -1;

  constexpr bool bounds() const { return least <= most; }
};

/// A query parameter, or a field of a body.
struct FieldRow {
  const wchar_t* name;
  ovra::request_validator::FieldType type;
  ovra::request_validator::FieldPresence presence;  ///< Where `when` holds.
  const wchar_t* help;                              ///< One line.
  std::vector<std::wstring> words = {};             ///< None: any.
  Range range = {};
  const wchar_t* unit = nullptr;
  const wchar_t* refersTo = nullptr;  ///< The type of object whose id it holds, or a list of such ids.
  Candidates candidates = {};
  Condition when = {};  ///< The field is allowed under it only.
};
using FieldRows = std::vector<FieldRow>;

struct RefusalRow {
  std::string errorId;
  std::wstring words;
  RefusalKind kind;
};
using RefusalRows = std::vector<RefusalRow>;

/// What a route has the library do.
struct LibraryCall {
  std::vector<const wchar_t*> operations = {};  ///< One of these; none: the library is not asked.
  /// The error id that clients see where the library finds an object in no state for it; null: the id of the
  /// status itself.
  const char* stateErrorId = nullptr;
};

enum class Fate { kComes, kChanges, kGoes, kOverwritten };

/// What an object is from then on, by the arguments that tell it; null: none does.
struct Shape {
  const wchar_t* level = nullptr;
  const wchar_t* size = nullptr;
  const wchar_t* disks = nullptr;  ///< The members of what comes, or further ones of what is there.
  const wchar_t* array = nullptr;  ///< The one that it comes in.
  bool fillsArray = false;         ///< It takes all that its array has.
};

/// What becomes of objects. Texts hold names of arguments in braces, which stand for the objects they name.
struct EffectRow {
  Fate fate;
  const wchar_t* type;      ///< Of the objects: "volume", "disk", "array", "controller", "port", "setting".
  const wchar_t* argument;  ///< Names them, or the object that they belong to; null: none does.
  /// To the argument's object: "itself", "volumes", "disks", "array", "journal" (the drive), "ports" (its
  /// own and those that they are plugged into) or "neighbours" (behind the same controller).
  const wchar_t* relation;
  const wchar_t* text;  ///< One sentence.
  Condition when = {};
  /// Of these objects, as the machine stands before: "emptied" (arrays, and disks of arrays, in which no
  /// other volume stands) or "kept" (where one does), "member" or "single" (disks of an array, or of none),
  /// "lost" (disks of an array that no longer serve) or "missing" (the one that is lost where it is not even
  /// there), "degraded" (volumes), "unshared" (drives with no other volume's journal), "forgotten" (disks
  /// that would be emptied or unshared, but are not there), "own" or "plugged" (ports). Null: all.
  const wchar_t* where = nullptr;
  const wchar_t* except = nullptr;  ///< Not what this argument names.
  Shape becomes = {};
};
using EffectRows = std::vector<EffectRow>;

enum class WorkKind { kRebuild, kInitialize, kVerify, kMigrate };

/// What goes on in the machine after the answer.
struct WorkRow {
  WorkKind kind;
  const wchar_t* on;  ///< The argument that names the object it goes on in.
  Condition when = {};
};

/// What an answer looks like: a schema by name, of one value or of each in a list. Without a name: no answer.
struct AnswerRow {
  const wchar_t* schema = nullptr;
  bool isList = false;
  bool isMomentary =
      false;  ///< It depends on when it is asked for, so that it differs while nothing changes.
};

/// How a route is asked for by words: "volumes rename". No two routes have both words alike.
struct CommandRow {
  const wchar_t* noun;  ///< What is looked at or changed, as a group of commands; "": the verb stands alone.
  const wchar_t* verb;
};

struct RouteRow {
  RouteId route;
  const wchar_t* id;
  CommandRow command;
  std::int32_t method;    ///< A code of http_method.h.
  const wchar_t* branch;  ///< Below the plug-in's key: "volumes"; "" is the key itself.
  const wchar_t* path;    ///< Below the branch: "{volumeId}/rebuild".
  const wchar_t* summary;
  const wchar_t* description;
  Effect effect;
  Role role;
  AnswerRow answer;
  RefusalRows refusals = {};  ///< Those of the plug-in itself.
  Judgement judgement = Judgement::kQuery;
  FieldRows query = {};
  FieldRows body = {};
  LibraryCall call = {};
  EffectRows effects = {};
  std::vector<WorkRow> works = {};
};
using RouteRows = std::vector<RouteRow>;

const wchar_t* toText(Effect effect);
const wchar_t* toText(Role role);
const wchar_t* toText(Fate fate);
const wchar_t* toText(WorkKind work);

#endif
