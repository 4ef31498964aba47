#include <gtest/gtest.h>

#include <boost/json/serialize.hpp>

#include "system/story.h"

// What is answered on the embedded machine: how requests are refused, and what changes leave behind.

namespace host {

namespace {

struct Refused {
  const char* method;
  const char* target;  ///< Has "<KIND NAME>" for an id, as `body` has.
  const char* body;
  unsigned status;
  const char* detail;
};

constexpr char kWrongState[] = "Item not in appropriate state for action to complete successfully";

const Refused kRefused[] = {
    {"GET", "mirn/raids/1?range=level&type=RAID_7", "", 400, "Invalid RAID level"},
    {"GET", "mirn/events?time=soon", "", 400, "Invalid time parameter"},
    {"PUT", "mirn/arrays/<array System_Array>", R"({"disks": ["<disk ENC0071>"]})", 422,
     "Cannot add a disk with block size different from source disks"},
    {"PUT", "mirn/arrays/<array System_Array>/writecache", R"({"state": -1})", 400,
     "Argument: state not a string type"},
    {"PUT", "mirn/controllers/<controller Ordan Ovraline SATA RAID Controller>/readpatrol", R"({"state": 1})",
     400, "Argument: state not a string type"},
    {"PUT", "mirn/controllers/<controller Ordan Ovraline SATA RAID Controller>/rohi", R"({"state": 1})", 400,
     "Argument: state not a string type"},
    {"PUT", "mirn/disks/<disk QV48021000A1>/clear", "", 409, kWrongState},
    {"PUT", "mirn/disks/<disk ENC0071>/clear", "", 422, "End Device is not a disk"},
    {"PUT", "mirn/disks/<disk QV48021000A1>/marknormal", "", 409, kWrongState},
    {"PUT", "mirn/disks/<disk ENC0071>/spare", R"({"action": "MARK"})", 400, "Invalid Disk"},
    {"PUT", "mirn/disks/<disk OX8T4410D200-A>/spare", R"({"action": "MARK"})", 422,
     "Mark/unmark as spare is not supported for X8 disks"},
    {"POST", "mirn/volumes",
     R"({"source": "DISK", "name": "New", "raidLevel": "RAID_1", "size": "4096",
         "disks": ["<disk TB2T7790315>", "<disk QV48021000A7>"]})",
     409, kWrongState},
    {"POST", "mirn/volumes",
     R"({"source": "DISK", "name": "New", "raidLevel": "RAID_1", "size": "4096",
         "disks": ["<disk TB4T6610092>", "<disk QV96021044E0>"]})",
     422, "Action is not supported"},
    {"PUT", "mirn/volumes/<volume Database>/cachepolicy", R"({"cachePolicy": 1})", 400,
     "Argument: cachePolicy not a string type"},
    {"PUT", "mirn/volumes/<volume Database>/level", R"({"raidLevel": "RAID_0"})", 409, kWrongState},
    {"PUT", "mirn/volumes/<volume Database>/marknormal", "", 409, kWrongState},
    {"PUT", "mirn/volumes/<volume Database>/rebuild", R"({"diskId": "<disk ENC0071>"})", 400,
     "Disk identifier not found"},
    {"PUT", "mirn/volumes/<volume Database>/rebuild", R"({"diskId": "<disk TB2T7790315>"})", 409,
     "Rebuild operation can be performed only on degraded volume"},
    {"PUT", "mirn/volumes/<volume Database>/rebuild", R"({"diskId": "<disk OX8T4410D200-B>"})", 422,
     "Rebuild using X8 disks is not supported"},
    {"PUT", "mirn/volumes/<volume Database>/size", R"({"size": 1})", 400, "Argument: size not a string type"},
    {"PUT", "mirn/volumes/<volume Database>/verify", R"({"action": "START"})", 400,
     "Repair parameter missing"},
};

class ChangeAnswers : public Story {
 protected:
  void SetUp() override { begin(); }

  /// The text with an id in each place for one.
  std::string filled(std::string text) {
    for (auto at = text.find('<'); at != std::string::npos; at = text.find('<', at)) {
      const auto space = text.find(' ', at), end = text.find('>', at);
      text.replace(at, end + 1 - at,
                   idOf(text.substr(at + 1, space - at - 1), text.substr(space + 1, end - space - 1)));
    }
    return text;
  }

  std::string machine() {
    boost::json::object all;
    for (const char* const kind : {"controllers", "arrays", "volumes", "enddevices"}) {
      all[kind] = list(std::string("mirn/") + kind);
    }
    return boost::json::serialize(all);
  }

 private:
  std::string idOf(const std::string& kind, const std::string& name) {
    const bool isDisk = kind == "disk";
    return text(
        find(isDisk ? "mirn/enddevices" : "mirn/" + kind + 's', isDisk ? "serialNumber" : "name", name),
        "id");
  }
};

TEST_F(ChangeAnswers, RefusalsChangeNothing) {
  const std::string before = machine();
  for (const Refused& refused : kRefused) {
    SCOPED_TRACE(std::string(refused.method) + ' ' + refused.target + ' ' + refused.body);
    const Reply reply = request(refused.method, filled(refused.target), filled(refused.body));
    EXPECT_EQ(reply.status, refused.status);
    ASSERT_TRUE(reply.body.is_object());
    EXPECT_EQ(text(reply.body.as_object(), "detail"), refused.detail);
    EXPECT_EQ(machine(), before);
  }
}

TEST_F(ChangeAnswers, AClearedSpareIsOneNoMore) {
  EXPECT_EQ(done("PUT", ofDisk("QV48021001C3", "clear")).at("usage"), "PASS_THROUGH");
  EXPECT_EQ(usageOf("QV48021001C3"), "PASS_THROUGH");
}

TEST_F(ChangeAnswers, AFailedDiskMarkedNormalIsNormal) {
  EXPECT_EQ(text(disk("OD3T2210A409"), "state"), "FAILED");
  EXPECT_EQ(done("PUT", ofDisk("OD3T2210A409", "marknormal")).at("state"), "NORMAL");
  EXPECT_EQ(text(disk("OD3T2210A409"), "state"), "NORMAL");
}

TEST_F(ChangeAnswers, AFailedVolumeMarkedNormalIsNormal) {
  befall("fail-disk", "OD1T9930B11A");
  EXPECT_EQ(stateOf("Scratch"), "NON_REDUNDANT_VOLUME_FAILED_DISK");
  EXPECT_EQ(done("PUT", ofVolume("Scratch", "marknormal")).at("state"), "NORMAL");
  EXPECT_EQ(stateOf("Scratch"), "NORMAL");
}

TEST_F(ChangeAnswers, CachesAreAsTheyWereSet) {
  const std::string array = "mirn/arrays/" + text(find("mirn/arrays", "name", "System_Array"), "id");
  done("PUT", array + "/writecache", {{"state", "DISABLED"}});
  EXPECT_EQ(find("mirn/arrays", "name", "System_Array").at("writeCachePolicy"), "OFF");
  done("PUT", array + "/writecache", {{"state", "ENABLED"}});
  EXPECT_EQ(find("mirn/arrays", "name", "System_Array").at("writeCachePolicy"), "ON");
  done("PUT", ofVolume("Database", "cachepolicy"), {{"cachePolicy", "WRITE_BACK"}});
  EXPECT_EQ(text(volume("Database"), "cachePolicy"), "WRITE_BACK");
}

}  // namespace

}  // namespace host
