// Time, versions, speech, keys and buttons.
#include "host/InputServices.h"
#include "host/SpeechServices.h"
#include "host/SystemServices.h"
#include "host/datarefs/DataRefRow.h"
#include "view/Screen.h"
#include "world/World.h"

namespace sim {

std::vector<DataRefRow> SystemDataRefs() {
  return {
      Double("sim/time/elapsed_s", "seconds", "simulated time", [] { return gWorld.elapsedSeconds; }),
      Int("sim/time/frame", "frames", "number of the frame, from 1",
          [] { return static_cast<double>(gWorld.frame); }),
      Switch(
          "sim/time/is_paused", "whether the world stands still; frames go on",
          [] { return gWorld.isPaused ? 1.0 : 0.0; }, [](double value) { gWorld.isPaused = value != 0.0; }),
      Int("sim/version/plugin_reloads", "times", "reloads of all plugins since the start",
          [] { return static_cast<double>(CountReloads()); }),
      Text("sim/speech/last_text", "what was spoken last", [] { return std::string_view(LastSpeech()); }),
      Int("sim/speech/count", "times", "texts spoken since the start",
          [] { return static_cast<double>(CountSpeeches()); }),
      Switch("sim/speech/is_shown", "whether the text spoken last is on the screen",
             [] { return IsSpeechShown() ? 1.0 : 0.0; }),
      Int("sim/input/mouse_x_px", "pixels", "where the mouse is, from the left",
          [] { return static_cast<double>(gScreen.mouseX); }),
      Int("sim/input/mouse_y_px", "pixels", "where the mouse is, from the bottom",
          [] { return static_cast<double>(gScreen.mouseY); }),
      Int("sim/input/simulated_keys", "keys", "keys that plugins pressed since the start",
          [] { return static_cast<double>(CountSimulatedKeys()); }),
      Int("sim/input/last_simulated_key", "key", "the key that a plugin pressed last",
          [] { return static_cast<double>(LastSimulatedKey()); }),
      Int("sim/input/buttons_held", "buttons", "buttons that plugins hold",
          [] { return static_cast<double>(CountHeldButtons()); }),
  };
}

}  // namespace sim
