#include "mirn_session.h"
#include "module/recorded_lives.h"
#include "support/model_samples.h"
#include "text.h"

namespace {

/// Steps of a session that was not started: no thread but this one calls.
class RecordedSession {
 public:
  explicit RecordedSession(CallRecord& record) : m_record(record) { ScriptedLibrary::fresh(); }

  template <class Action>
  void act(const std::string& heading, const Action& action) {
    m_record.step(heading, [&] {
      action(m_session);
      return "";
    });
  }

 private:
  CallRecord& m_record;
  MirnSession m_session;
};

EndDevice disk(VEX_HANDLE handle, const std::wstring& id) {
  return complete<EndDevice>().handle(handle).id(id).build();
}

void recordDiskActions(RecordedSession& session) {
  for (const int pool : {0, 1, 255}) {
    session.act("AssignStoragePool" + std::to_string(pool),
                [=](MirnSession& of) { of.assignStoragePool(23, static_cast<std::uint8_t>(pool)); });
  }
  session.act("MarkAsSpareOfAnArray", [](MirnSession& of) { of.markAsSpare(23, 41); });
  const auto unlock = [&](const std::string& heading, UserLevel level, const std::string& password) {
    session.act("Unlock" + heading, [&](MirnSession& of) { of.unlock(23, level, utf8ToWide(password)); });
  };
  unlock("AsMaster", UserLevel::kMaster, "secret");
  unlock("AsUser", UserLevel::kUser, "secret");
  unlock("WithoutPassword", UserLevel::kUser, "");
  unlock("WithTheLongestPassword", UserLevel::kUser, "0123456789abcdefghijklmnopqrstuv");
  unlock("WithBytesOfTwoToFour", UserLevel::kMaster, "\303\251\342\202\254\360\237\222\276");
}

/// A name in the records is cut at 16 bytes, a renaming is not.
void recordNames(RecordedSession& session) {
  const Volume volume = complete<Volume>().handle(52).build();
  const Array array = complete<Array>().handle(41).build();
  const std::vector<EndDevice> disks = {disk(24, L"24"), disk(23, L"23")};
  const std::string names[] = {"", "\303\251\342\202\254\360\237\222\276", "fourteen bytes\342\202\254",
                               "\360\237\222\276\360\237\222\276\360\237\222\276\360\237\222\276"
                               "\360\237\222\276\360\237\222\276\360\237\222\276\360\237\222\276"};
  for (const std::string& name : names) {
    const std::wstring wide = utf8ToWide(name);
    const std::string quoted = " \"" + name + '"';
    session.act("Rename" + quoted, [&](MirnSession& of) { of.rename(volume, wide); });
    session.act("Create" + quoted, [&](MirnSession& of) {
      of.createVolume(array, wide, StripSize::SIZE_64MB, RaidLevel::RAID_10, 7, {});
    });
    session.act("CreateFromDisks" + quoted, [&](MirnSession& of) {
      of.createVolumeFromDisks(disks, wide, StripSize::SIZE_2KB, RaidLevel::RAID_5, 7, L"23", {});
    });
  }
}

void recordUnusualValues(RecordedSession& session) {
  const Volume volume = complete<Volume>().handle(52).build();
  session.act("CreateFromNoDisks", [](MirnSession& of) {
    of.createVolumeFromDisks({}, L"None", StripSize::SIZE_UNKNOWN, RaidLevel::RAID_1, 0, L"23", {});
  });
  session.act("ModifyWithASize", [&](MirnSession& of) {
    of.modifyRaidLevel(volume, StripSize::SIZE_32MB, RaidLevel::RAID_5, 0x0123456789ABCDEF,
                       {disk(24, L"24")});
  });
  session.act("ModifyToAnUnknownLevel", [&](MirnSession& of) {
    of.modifyRaidLevel(volume, StripSize::SIZE_UNKNOWN, RaidLevel::RAID_UNKNOWN, 0, {});
  });
  session.act("LocateOff",
              [](MirnSession& of) { of.locate(complete<Port>().handle(63).build(), EnableState::DISABLED); });
}

}  // namespace

void recordSession(CallRecord& record) {
  RecordedSession session(record);
  recordDiskActions(session);
  recordNames(session);
  recordUnusualValues(session);
}
