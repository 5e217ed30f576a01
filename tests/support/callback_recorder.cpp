#include "support/callback_recorder.h"

#include <array>
#include <cstring>
#include <utility>

namespace support {
namespace {

struct SlotInfo {
  const char* name;
  size_t offset;
};

#define KORVU_SLOT(name)                      \
  SlotInfo {                                  \
#name, offsetof(KorvuISD_Callbacks, name) \
  }
constexpr std::array<SlotInfo, kSlotCount> kSlots = {
    KORVU_SLOT(OnVersions),
    KORVU_SLOT(OnPenInfo),
    KORVU_SLOT(OnEraserSingle),
    KORVU_SLOT(OnEraserDouble),
    KORVU_SLOT(OnEraserLong),
    KORVU_SLOT(OnUpperSideSwitch),
    KORVU_SLOT(OnLowerSideSwitch),
    KORVU_SLOT(OnPressureCurve),
    KORVU_SLOT(OnTiltSensitivity),
    KORVU_SLOT(OnBatteryAlertDelay),
    KORVU_SLOT(OnRadialWedge),
    KORVU_SLOT(OnCenterRightClick),
    KORVU_SLOT(OnCapturedKeystrokes),
    KORVU_SLOT(OnDisplayZoomMap),
    KORVU_SLOT(OnRunAppOptions),
    KORVU_SLOT(OnTopButtonSingleOptions),
    KORVU_SLOT(OnTopButtonDoubleOptions),
    KORVU_SLOT(OnTopButtonLongOptions),
    KORVU_SLOT(OnSideSwitchOptions),
    KORVU_SLOT(OnFirstRange),
    KORVU_SLOT(OnSecondRange),
    KORVU_SLOT(OnRadialWedgeOptions),
    KORVU_SLOT(OnWedgeCapacity),
    KORVU_SLOT(OnOpaqueEnabledGlobal),
    KORVU_SLOT(OnOpaqueDisplayPath),
    KORVU_SLOT(OnOpaqueOrientation),
    KORVU_SLOT(OnOpaqueInputMode),
    KORVU_SLOT(OnOpaqueMapping),
    KORVU_SLOT(OnMonitorOptions),
    KORVU_SLOT(OnRadialWedgeEx),
    KORVU_SLOT(OnRadialZonesCount),
    KORVU_SLOT(OnAutoExecuteButton),
    KORVU_SLOT(OnAutoUndockOptions),
    KORVU_SLOT(OnPenDockPowerSaving),
    KORVU_SLOT(OnPenAlertEnabled),
    KORVU_SLOT(OnFeatureSupport),
    KORVU_SLOT(OnOpaqueInSetupGuide),
    KORVU_SLOT(OnOpaqueRememberDisplay),
    KORVU_SLOT(OnUndockedTimerWait),
    KORVU_SLOT(OnPenGesturesEnabled),
    KORVU_SLOT(OnMagnifierEnabled),
};
#undef KORVU_SLOT

std::wstring Quoted(const std::wstring& text) {
  return L'"' + text + L'"';
}

// A name field: up to its terminator, or whole if it has none.
std::wstring NameOf(const wchar_t* field, size_t capacity) {
  size_t length = 0;
  while (length < capacity && field[length]) ++length;
  return std::wstring(field, length);
}

std::wstring Record(const ButtonRecord& record) {
  return std::to_wstring(record.function) + L" " +
         Quoted(NameOf(record.name, KORVUISD_NAME_CAPACITY));
}

ButtonRecord MakeRecord(int32_t function, const std::wstring& name) {
  ButtonRecord record{};
  record.function = function;
  name.copy(record.name, KORVUISD_NAME_CAPACITY);
  return record;
}

// The arguments of each callback shape ----------------------------------------------------------

std::wstring Write(int32_t value) {
  return arguments::Value(value);
}
std::wstring Write(uint64_t value) {
  return arguments::Value(static_cast<int64_t>(value));
}
std::wstring Write(const VersionInfo* versions) {
  return arguments::Versions(versions->hidRouterVersion, versions->serviceVersion);
}
std::wstring Write(const PenInfo* pen) {
  return arguments::Pen(*pen);
}
std::wstring Write(const ButtonRecord* button, int32_t reserved) {
  return Record(*button) + L" " + std::to_wstring(reserved);
}
std::wstring Write(const KorvuISD_SideSwitch* sideSwitch, int32_t) {
  // The third argument carries no value after a change of hover click.
  return Record(sideSwitch->button) + L" hover " + std::to_wstring(sideSwitch->hoverClick);
}
std::wstring Write(int32_t reserved, const ButtonRecord* wedge) {
  return std::to_wstring(reserved) + L" " + Record(*wedge);
}
std::wstring Write(const wchar_t* text, uint64_t codeUnits) {
  return arguments::Text(std::wstring(text, codeUnits));
}
std::wstring Write(const wchar_t* text) {
  return arguments::Text(text);
}
std::wstring Write(const KorvuISD_ZoomMapEntry* entries, uint64_t count) {
  return arguments::ZoomMap({entries, entries + count});
}
std::wstring Write(const ButtonRecord* options, uint64_t count) {
  std::wstring text = std::to_wstring(count) + L" options";
  for (uint64_t i = 0; i < count; ++i) text += L", " + Record(options[i]);
  return text;
}
std::wstring Write(const KorvuISD_MonitorOption* monitors, uint64_t count, int32_t selected) {
  std::vector<arguments::Monitor> all;
  for (uint64_t i = 0; i < count; ++i) {
    all.push_back({monitors[i].displayPath, monitors[i].displayName});
  }
  return arguments::Monitors(all, selected);
}
std::wstring Write(int32_t first, int32_t second) {
  return arguments::Pair(first, second);
}
std::wstring Write(int32_t ring, uint8_t count) {
  return arguments::Pair(ring, count);
}

// One recording function per slot, of the slot's own type.
template <int kSlot, class Function>
struct Recording;
template <int kSlot, class... Arguments>
struct Recording<kSlot, void(KORVUISD_CALL*)(void*, Arguments...)> {
  static void KORVUISD_CALL Function(void* context, Arguments... arguments) {
    CallbackRecorder::Instance().Record(kSlot, context, Write(arguments...));
  }
};

template <int kSlot, class Callback>
void SetSlot(Callback& callback) {
  callback = &Recording<kSlot, Callback>::Function;
}

}  // namespace

namespace arguments {

std::wstring Value(int64_t value) {
  return std::to_wstring(value);
}

std::wstring Versions(const std::wstring& hidRouter, const std::wstring& service) {
  return Quoted(hidRouter) + L" " + Quoted(service);
}

std::wstring Pen(const PenInfo& pen) {
  return L"pen " + Quoted(pen.serialNumber) + L" id " + Quoted(pen.penId) + L" module " +
         Quoted(pen.module.version) + L" " + Quoted(pen.module.moduleId) + L" " +
         std::to_wstring(pen.module.productId) + L" " + Quoted(pen.module.serialNumber) +
         L" battery " + std::to_wstring(pen.batteryStatus) + L" charging " +
         std::to_wstring(pen.batteryCharging) + L" near " + std::to_wstring(pen.inProximity) +
         L" vendor " + std::to_wstring(pen.vendorId) + L" type " + std::to_wstring(pen.penType) +
         L" firmware " + Quoted(pen.firmwareVersion) + L" sensor " + std::to_wstring(pen.sensorId) +
         L" connected " + std::to_wstring(pen.moduleConnected) + L" docked " +
         std::to_wstring(pen.docked);
}

std::wstring Button(int32_t function, const std::wstring& name) {
  const ButtonRecord record = MakeRecord(function, name);
  return Write(&record, 0);
}

std::wstring SideSwitch(int32_t function, const std::wstring& name, int32_t hoverClick) {
  const KorvuISD_SideSwitch sideSwitch = {MakeRecord(function, name), hoverClick};
  return Write(&sideSwitch, 0);
}

std::wstring Wedge(int32_t function, const std::wstring& name) {
  const ButtonRecord record = MakeRecord(function, name);
  return Write(0, &record);
}

std::wstring Text(const std::wstring& text) {
  return Quoted(text);
}

std::wstring ZoomMap(const std::vector<KorvuISD_ZoomMapEntry>& entries) {
  std::wstring text = std::to_wstring(entries.size()) + L" entries";
  for (const KorvuISD_ZoomMapEntry& entry : entries) {
    text += L", " + std::to_wstring(entry.a) + L" " + std::to_wstring(entry.b) + L" " +
            std::to_wstring(entry.c) + L" " + std::to_wstring(entry.d);
  }
  return text;
}

std::wstring Options(const std::vector<Option>& options) {
  std::vector<ButtonRecord> records;
  for (const Option& option : options) records.push_back(MakeRecord(option.function, option.name));
  return Write(records.data(), static_cast<uint64_t>(records.size()));
}

std::wstring Monitors(const std::vector<Monitor>& monitors, int32_t selected) {
  std::wstring text =
      std::to_wstring(monitors.size()) + L" monitors, selected " + std::to_wstring(selected);
  for (const Monitor& monitor : monitors) {
    text += L", " + Quoted(monitor.path) + L" " + Quoted(monitor.name);
  }
  return text;
}

std::wstring Pair(int64_t first, int64_t second) {
  return std::to_wstring(first) + L" " + std::to_wstring(second);
}

}  // namespace arguments

bool operator==(const Call& x, const Call& y) {
  return x.slot == y.slot && x.context == y.context && x.arguments == y.arguments;
}

void PrintTo(const Call& call, std::ostream* out) {
  *out << SlotName(call.slot) << "(" << call.context << ", ";
  for (const wchar_t unit : call.arguments) {
    *out << (unit < 0x80 ? static_cast<char>(unit) : '?');
  }
  *out << ")";
}

const char* SlotName(int slot) {
  return kSlots[static_cast<size_t>(slot)].name;
}

CallbackRecorder& CallbackRecorder::Instance() {
  // Never destroyed: the library's thread may still call when the process ends.
  static CallbackRecorder& instance = *new CallbackRecorder;
  return instance;
}

KorvuISD_Callbacks CallbackRecorder::All() {
  KorvuISD_Callbacks all{};
  SetSlot<0>(all.OnVersions);
  SetSlot<1>(all.OnPenInfo);
  SetSlot<2>(all.OnEraserSingle);
  SetSlot<3>(all.OnEraserDouble);
  SetSlot<4>(all.OnEraserLong);
  SetSlot<5>(all.OnUpperSideSwitch);
  SetSlot<6>(all.OnLowerSideSwitch);
  SetSlot<7>(all.OnPressureCurve);
  SetSlot<8>(all.OnTiltSensitivity);
  SetSlot<9>(all.OnBatteryAlertDelay);
  SetSlot<10>(all.OnRadialWedge);
  SetSlot<11>(all.OnCenterRightClick);
  SetSlot<12>(all.OnCapturedKeystrokes);
  SetSlot<13>(all.OnDisplayZoomMap);
  SetSlot<14>(all.OnRunAppOptions);
  SetSlot<15>(all.OnTopButtonSingleOptions);
  SetSlot<16>(all.OnTopButtonDoubleOptions);
  SetSlot<17>(all.OnTopButtonLongOptions);
  SetSlot<18>(all.OnSideSwitchOptions);
  SetSlot<19>(all.OnFirstRange);
  SetSlot<20>(all.OnSecondRange);
  SetSlot<21>(all.OnRadialWedgeOptions);
  SetSlot<22>(all.OnWedgeCapacity);
  SetSlot<23>(all.OnOpaqueEnabledGlobal);
  SetSlot<24>(all.OnOpaqueDisplayPath);
  SetSlot<25>(all.OnOpaqueOrientation);
  SetSlot<26>(all.OnOpaqueInputMode);
  SetSlot<27>(all.OnOpaqueMapping);
  SetSlot<28>(all.OnMonitorOptions);
  SetSlot<29>(all.OnRadialWedgeEx);
  SetSlot<30>(all.OnRadialZonesCount);
  SetSlot<31>(all.OnAutoExecuteButton);
  SetSlot<32>(all.OnAutoUndockOptions);
  SetSlot<33>(all.OnPenDockPowerSaving);
  SetSlot<34>(all.OnPenAlertEnabled);
  SetSlot<35>(all.OnFeatureSupport);
  SetSlot<36>(all.OnOpaqueInSetupGuide);
  SetSlot<37>(all.OnOpaqueRememberDisplay);
  SetSlot<38>(all.OnUndockedTimerWait);
  SetSlot<39>(all.OnPenGesturesEnabled);
  SetSlot<40>(all.OnMagnifierEnabled);
  return all;
}

void CallbackRecorder::ClearSlot(KorvuISD_Callbacks& callbacks, int slot) {
  std::memset(reinterpret_cast<char*>(&callbacks) + kSlots[static_cast<size_t>(slot)].offset, 0,
              sizeof(void*));
}

std::vector<Call> CallbackRecorder::Calls() const {
  const std::lock_guard lock(mutex);
  return calls;
}

std::vector<Call> CallbackRecorder::CallsOf(int slot) const {
  const std::lock_guard lock(mutex);
  std::vector<Call> found;
  for (const Call& call : calls) {
    if (call.slot == slot) found.push_back(call);
  }
  return found;
}

size_t CallbackRecorder::CountOf(int slot) const {
  const std::lock_guard lock(mutex);
  return counts[static_cast<size_t>(slot)];
}

void CallbackRecorder::Forget() {
  const std::lock_guard lock(mutex);
  calls.clear();
  counts = {};
}

bool CallbackRecorder::WaitFor(size_t count, std::chrono::milliseconds patience) {
  std::unique_lock lock(mutex);
  return WaitUntil(
      lock, changed, [&] { return calls.size() >= count; }, patience);
}

bool CallbackRecorder::WaitForSlot(int slot, size_t count, std::chrono::milliseconds patience) {
  std::unique_lock lock(mutex);
  return WaitUntil(
      lock, changed, [&] { return counts[static_cast<size_t>(slot)] >= count; }, patience);
}

void CallbackRecorder::WhenCalled(std::function<void(const Call&)> next) {
  const std::lock_guard lock(mutex);
  action = std::move(next);
}

void CallbackRecorder::Record(int slot, void* context, std::wstring arguments) {
  const Call call{slot, context, std::move(arguments), GetCurrentThreadId()};
  std::function<void(const Call&)> now;
  {
    const std::lock_guard lock(mutex);
    calls.push_back(call);
    ++counts[static_cast<size_t>(slot)];
    now = action;
  }
  changed.notify_all();
  if (now) now(call);
}

}  // namespace support
