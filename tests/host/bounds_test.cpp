// Which test holds each bound, at it and beyond it.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "configuration/option_table.h"
#include "support/expected_file.h"

namespace host {

namespace {

/// A place in a test: a file below tests/host, and a text in it, the test's name or its row's.
struct Place {
  std::string file;
  std::string text;
};

struct BoundRow {
  std::string option;
  Place within;  ///< Where what just keeps the bound is taken.
  Place beyond;
};

const std::string kLimits = "service/host_limits_test.cpp";
const std::string kVectors = "http/request_vectors.cpp";
const std::string kReader = "http/request_reader_test.cpp";
const std::string kConnections = "net/connections_test.cpp";
const std::string kPool = "net/worker_pool_test.cpp";
const std::string kLanes = "net/lanes_test.cpp";
const std::string kOrder = "service/host_calling_order_test.cpp";
const std::string kKept = "revisions/kept_answers_test.cpp";
const std::string kWatch = "revisions/revision_watch_test.cpp";
const std::string kStream = "insight/stream_endpoint_test.cpp";

const BoundRow kRows[] = {
    {"read-workers",
     {kLanes, "AsManyRunAsThereAreWorkersAndOneMoreWaits"},
     {kLanes, "AsManyRunAsThereAreWorkersAndOneMoreWaits"}},
    {"change-workers",
     {kLanes, "AsManyRunAsThereAreWorkersAndOneMoreWaits"},
     {kLanes, "AsManyRunAsThereAreWorkersAndOneMoreWaits"}},
    {"max-waiting",
     {kPool, "TakesOfNobodyInParticularWhatMayWaitOfAll"},
     {kLimits, "RequestsBeyondTheWaitingOnesAreTurnedAway"}},
    {"max-waiting-of-one",
     {kPool, "TakesOfOneIdentityWhatMayWaitOfIt"},
     {kPool, "TakesOfOneIdentityWhatMayWaitOfIt"}},
    {"max-connections",
     {kConnections, "TakeInUpToTheBound"},
     {kLimits, "WhereAllConnectionsAreAtWorkTheNextIsTurnedAway"}},
    {"max-connections-of-one",
     {kConnections, "OfOneAddressThereAreOnlyAFew"},
     {kConnections, "OfOneAddressThereAreOnlyAFew"}},
    {"max-pipelined",
     {kLimits, "RequestsAreSentAheadUpToTheBound"},
     {kLimits, "RequestsAreSentAheadUpToTheBound"}},
    {"max-header", {kReader, "AHeaderMayBeAsLargeAsTheBound"}, {kReader, "AHeaderMayBeAsLargeAsTheBound"}},
    {"max-header-line", {kVectors, "\"longest field\""}, {kVectors, "\"field one too long\""}},
    {"max-fields", {kVectors, "\"most fields\""}, {kVectors, "\"one field too many\""}},
    {"max-target", {kVectors, "\"longest target\""}, {kVectors, "\"target one too long\""}},
    {"max-body", {kLimits, "ABodyBeyondTheBoundIsRefused"}, {kLimits, "ABodyBeyondTheBoundIsRefused"}},
    {"max-depth",
     {kLimits, "ABodyNestedBeyondTheBoundIsRefused"},
     {kLimits, "ABodyNestedBeyondTheBoundIsRefused"}},
    {"max-values",
     {kLimits, "ABodyOfMoreValuesThanTheBoundIsRefused"},
     {kLimits, "ABodyOfMoreValuesThanTheBoundIsRefused"}},
    {"max-segments",
     {kLimits, "ATargetOfMoreSegmentsThanTheBoundIsRefused"},
     {kLimits, "ATargetOfMoreSegmentsThanTheBoundIsRefused"}},
    {"max-parameters",
     {kLimits, "ATargetOfMoreParametersThanTheBoundIsRefused"},
     {kLimits, "ATargetOfMoreParametersThanTheBoundIsRefused"}},
    {"max-kept", {kKept, "AnAnswerMayBeAsLargeAsTheBound"}, {kKept, "AnAnswerMayBeAsLargeAsTheBound"}},
    {"max-watching", {kWatch, "PlacesAreBoundedAndComeBack"}, {kWatch, "PlacesAreBoundedAndComeBack"}},
    {"max-listeners",
     {kStream, "ListenersAreBoundedAndMakePlace"},
     {kStream, "ListenersAreBoundedAndMakePlace"}},
    {"header-timeout",
     {kLimits, "WhoTakesItsTimeIsServed"},
     {kLimits, "AClientThatStopsInTheHeaderIsClosed"}},
    {"body-timeout", {kLimits, "WhoTakesItsTimeIsServed"}, {kLimits, "AClientThatStopsInTheBodyIsClosed"}},
    {"write-timeout", {kLimits, "WhoTakesItsTimeIsServed"}, {kLimits, "AClientThatTakesNoAnswerIsClosed"}},
    {"idle-timeout", {kLimits, "WhoTakesItsTimeIsServed"}, {kLimits, "AnIdleClientIsClosedAfterItsAnswer"}},
    {"drain-timeout",
     {kOrder, "RequestsUnderWayAreAnsweredBeforeThePluginFinishes"},
     {kOrder, "ACallThatNeverEndsIsLeftAfterTheDrainTimeWithoutFinish"}},
};

void expectThere(const BoundRow& row, const Place& place) {
  const std::string source = readExpectedFile(MIRN_HOST_TESTS + ("/" + place.file));
  EXPECT_NE(source.find(place.text), std::string::npos)
      << row.option << ": " << place.text << " is not in " << place.file;
}

TEST(Bounds, AreHeldWhereTheTableSays) {
  for (const BoundRow& row : kRows) {
    expectThere(row, row.within);
    expectThere(row, row.beyond);
  }
}

/// Whoever adds a bound says here which test holds it.
TEST(Bounds, AllOptionsOfOneHaveARow) {
  std::set<std::string> known;
  for (const BoundRow& row : kRows) known.insert(row.option);
  std::set<std::string> told;
  for (const Option& option : optionTable()) {
    if (option.group == OptionGroup::kBounds && option.name != "threads") told.insert(option.name);
  }
  EXPECT_EQ(told, known);
}

}  // namespace

}  // namespace host
