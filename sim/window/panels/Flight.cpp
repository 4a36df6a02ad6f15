// The flight file as it is carried out, and what the user does as another one.
#include <fmt/format.h>
#include <imgui.h>
#include <imgui/imgui_stdlib.h>

#include <string>

#include "flight/FlightRunner.h"
#include "report/Moment.h"
#include "window/Panel.h"
#include "window/Recording.h"
#include "window/WidgetPlaces.h"
#include "window/Widgets.h"

namespace sim {
namespace {

constexpr const char* kPanel = "Flight";

void DrawText(std::string_view text) { ImGui::TextUnformatted(text.data(), text.data() + text.size()); }

// ---- Recording --------------------------------------------------------------------------------------------

std::string gFileName = "recorded-flight.json";
std::string gAnswer;
bool gIsThereAlready = false;

void Save(bool mayOverwrite) {
  gAnswer = gRecording.Save(gFileName, mayOverwrite);
  gIsThereAlready = gAnswer.ends_with("is there already");
  if (gAnswer.empty()) gAnswer = fmt::format("{} written", gFileName);
}

void DrawRecording() {
  const bool isStopped = gRecording.IsStopped();
  ColouredText(Shade(isStopped ? kFaint : kBad), isStopped ? "stopped" : "recording");
  ImGui::SameLine();
  DrawText(
      fmt::format("{} steps in {} frames since the flight began", gRecording.Steps(), gRecording.Frames()));
  if (ImGui::Button(isStopped ? "Record" : "Stop")) {
    if (isStopped)
      gRecording.GoOn();
    else
      gRecording.Stop();
  }
  MarkWidget(kPanel, isStopped ? "record" : "stop");
  ImGui::SameLine();
  ImGui::SetNextItemWidth(-12.0F * ImGui::GetFontSize());
  if (ImGui::InputText("##file", &gFileName)) gIsThereAlready = false;
  MarkField(kPanel, "file", gFileName);
  ImGui::SameLine();
  if (ImGui::Button("Save")) Save(false);
  MarkWidget(kPanel, "save");
  if (gIsThereAlready) {
    ImGui::SameLine();
    if (ImGui::Button("Overwrite")) Save(true);
    MarkWidget(kPanel, "overwrite");
  }
  if (!gAnswer.empty()) DrawText(gAnswer);
}

// ---- What is carried out ----------------------------------------------------------------------------------

void DrawProgress(const ProgressOf& progress, const char* done) {
  switch (progress.progress) {
    case Progress::Waiting:
      return FaintText("waiting");
    case Progress::Running:
      return ColouredText(Shade(kWarning), "under way");
    case Progress::Done:
      return ColouredText(Shade(kGood), done);
    case Progress::Failed:
      return ColouredText(Shade(kBad), "FAILED");
  }
}

bool BeginRows(const char* name) {
  if (!ImGui::BeginTable(name, 4,
                         ImGuiTableFlags_RowBg | ImGuiTableFlags_Resizable | ImGuiTableFlags_BordersInnerV))
    return false;
  ImGui::TableSetupColumn("line", ImGuiTableColumnFlags_WidthFixed);
  ImGui::TableSetupColumn("state", ImGuiTableColumnFlags_WidthFixed);
  ImGui::TableSetupColumn("what", ImGuiTableColumnFlags_WidthStretch, 3.0F);
  ImGui::TableSetupColumn("found", ImGuiTableColumnFlags_WidthStretch, 2.0F);
  ImGui::TableHeadersRow();
  return true;
}

void DrawRow(int line, const std::string& text, const ProgressOf& progress, const char* done) {
  ImGui::TableNextRow();
  ImGui::TableNextColumn();
  ImGui::Text("%d", line);
  ImGui::TableNextColumn();
  DrawProgress(progress, done);
  ImGui::TableNextColumn();
  DrawText(text);
  if (ImGui::IsItemHovered()) ImGui::SetTooltip("%s", text.c_str());
  ImGui::TableNextColumn();
  if (progress.progress == Progress::Waiting) return;
  const std::string found = fmt::format("{}: {}", MomentName(progress.moment), progress.found);
  DrawText(found);
  if (ImGui::IsItemHovered()) ImGui::SetTooltip("%s", found.c_str());
}

void DrawSteps(const FlightRunner& runner) {
  if (!ImGui::CollapsingHeader("Steps", ImGuiTreeNodeFlags_DefaultOpen) || !BeginRows("steps")) return;
  for (const StepRow& row : runner.Plan().rows)
    for (const Step& step : row.steps) DrawRow(step.line, step.text, runner.Of(step), "done");
  ImGui::EndTable();
}

void DrawExpectations(const FlightRunner& runner) {
  if (!ImGui::CollapsingHeader("Expectations", ImGuiTreeNodeFlags_DefaultOpen) || !BeginRows("expectations"))
    return;
  for (const Expectation& expectation : runner.Plan().expectations)
    DrawRow(expectation.line, fmt::format("{}: {}", MomentName(expectation.moment), expectation.claim.text),
            runner.Of(expectation), "ok");
  ImGui::EndTable();
}

void Draw() {
  DrawRecording();
  ImGui::Separator();
  if (gFlightRunner == nullptr) return;
  const Flight& plan = gFlightRunner->Plan();
  if (plan.rows.empty() && plan.expectations.empty())
    return ImGui::TextUnformatted("no flight file is flown");
  DrawSteps(*gFlightRunner);
  DrawExpectations(*gFlightRunner);
}

}  // namespace

const Panel kFlightPanel{.name = kPanel, .key = 6, .draw = Draw};

}  // namespace sim
