// Speech: there is no voice, so that what is said goes to the log, and for some seconds onto the screen.
#pragma once

#include <string>

#include "VYRAHost.h"

namespace sim {

void FillSpeechServices(VYRAHostServices& services);

void Speak(const std::string& text);

// Takes the text off the screen.
void Silence();

const std::string& LastSpeech();
int CountSpeeches();
bool IsSpeechShown();

}  // namespace sim
