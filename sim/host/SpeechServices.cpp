#include "host/SpeechServices.h"

#include <fmt/core.h>

#include "report/Log.h"
#include "world/World.h"

namespace sim {
namespace {

constexpr double kSecondsShown = 5.0;

std::string gLast;
int gCount = 0;
double gShownUntil = 0.0;  // simulated seconds

}  // namespace

void FillSpeechServices(VYRAHostServices& services) {
  services.SpeakString = [](const char* text) {
    if (text != nullptr) Speak(text);
  };
}

void Speak(const std::string& text) {
  gLast = text;
  ++gCount;
  gShownUntil = gWorld.elapsedSeconds + kSecondsShown;
  gLog->Write(fmt::format("Speech: {}\n", text));
}

void Silence() { gShownUntil = 0.0; }

const std::string& LastSpeech() { return gLast; }

int CountSpeeches() { return gCount; }

bool IsSpeechShown() { return gWorld.elapsedSeconds < gShownUntil; }

}  // namespace sim
