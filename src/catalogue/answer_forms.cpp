#include "answer_forms.h"

#include "answer_fields.h"

using ovra::data_transfer::ServiceObject;

ServiceObject formOf(const StateAnswer& answer) { return field::formOf<StateAnswer>(answer); }
ServiceObject formOf(const SettingAnswer& answer) { return field::formOf<SettingAnswer>(answer); }
ServiceObject formOf(const ArrayCacheAnswer& answer) { return field::formOf<ArrayCacheAnswer>(answer); }
ServiceObject formOf(const ArrayDisksAnswer& answer) { return field::formOf<ArrayDisksAnswer>(answer); }
ServiceObject formOf(const ControllerSwitchAnswer& answer) {
  return field::formOf<ControllerSwitchAnswer>(answer);
}
ServiceObject formOf(const DiskAnswer& answer) { return field::formOf<DiskAnswer>(answer); }
ServiceObject formOf(const VolumeStateAnswer& answer) { return field::formOf<VolumeStateAnswer>(answer); }
ServiceObject formOf(const VolumeNameAnswer& answer) { return field::formOf<VolumeNameAnswer>(answer); }
ServiceObject formOf(const VolumeAnswer& answer) { return field::formOf<VolumeAnswer>(answer); }
