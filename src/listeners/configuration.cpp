#include "configuration.h"

#include "answer_forms.h"
#include "messages.h"
#include "published_form.h"
#include "requests.h"

namespace {

ServiceObject settingForm(const PluginSetting& setting, std::int64_t value) {
  return formOf(SettingAnswer{setting.description, setting.type, value, setting.least, setting.most});
}

PluginSettings settingsIn(const ServiceObject& body, const PluginSettings& settings) {
  PluginSettings named;
  for (const PluginSetting& setting : settings) {
    if (body.hasKey(setting.key)) named.push_back(setting);
  }
  return named;
}

/// A number above the signed maximum turns negative, and is refused as such.
std::int64_t requestedValue(const ServiceObject& body, const PluginSetting& setting) {
  return body.member(setting.key).toInt64();
}

}  // namespace

ServiceObject configurationOf(const PluginSettings& settings, IMirnSession& session) {
  PublishedForm form;
  for (const PluginSetting& setting : settings) {
    form.part(setting.key, settingForm(setting, (session.*setting.get)()));
  }
  return form.take();
}

void changeConfiguration(const PluginSettings& settings, IMirnSession& session, const ServiceObject& body) {
  Rules rules;
  for (const PluginSetting& setting : settings) rules.push_back(optionalUnsigned(setting.key));
  judgeBody(body, rules);
  const PluginSettings named = settingsIn(body, settings);
  requireThat(!named.empty(), kErrorInvalidParameter, kMsgConfigurationEmpty);
  for (const PluginSetting& setting : named) {
    const std::int64_t value = requestedValue(body, setting);
    requireThat(value >= setting.least, kErrorInvalidParameter, setting.tooLow);
    requireThat(value <= setting.most, kErrorInvalidParameter, setting.tooHigh);
  }
  for (const PluginSetting& setting : named) {
    const bool stored = (session.*setting.set)(requestedValue(body, setting));
    requireThat(stored, kErrorInternal, setting.notStored);
  }
}
