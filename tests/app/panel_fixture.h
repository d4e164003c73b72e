#pragma once

#include <string>
#include <vector>

#include "app/views/converter_view.h"
#include "engine/conversion_result.h"
#include "engine/locale_texts.h"
#include "preferences/preferences_store.h"
#include "tests/fakes/fake_pasteboard.h"
#include "tests/fakes/manual_clock.h"
#include "tests/fakes/manual_timers.h"

namespace horalo {

// Everything a converter view needs, without a desktop: the clock stands at 2026-01-01T00:00:00Z
// and the user's own zone is Paris. Scan codes are virtual key codes.
struct PanelFixture {
  explicit PanelFixture(const std::string& locale = "en_US") : texts(locale) {}

  ManualClock clock{Instant{1767225600, 0}};
  FixedZone zones{TimeZone::find("Europe/Paris").value()};
  LocaleTexts texts;
  RowContext rowContext{clock, zones, texts};
  TimestampParser parser{clock, zones};
  ManualTimers timers{&clock};
  PreferencesStore store{{}, timers};
  Preferences preferences{store};
  NotificationCenter notifications;
  FakePasteboard pasteboard;
  ConverterViewModel viewModel{{parser, clock, zones, timers, preferences}};

  // What the view asked for, in order: "dismiss", "settings", "toast".
  std::vector<std::string> calls;

  ConverterView::Environment environment() {
    return {viewModel,
            preferences,
            notifications,
            pasteboard,
            timers,
            rowContext,
            [](std::uint32_t scanCode) { return scanCode; }};
  }
  ConverterView::Callbacks callbacks() {
    return {[this] { calls.emplace_back("dismiss"); }, [this] { calls.emplace_back("settings"); },
            [this] { calls.emplace_back("toast"); }};
  }
};

}  // namespace horalo
