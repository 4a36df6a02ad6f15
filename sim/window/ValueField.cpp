#include "window/ValueField.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <imgui.h>
#include <imgui/imgui_stdlib.h>

#include <charconv>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "VYRADataAccess.h"
#include "window/Ask.h"
#include "window/WidgetPlaces.h"

namespace sim {
namespace {

struct Edit {
  std::string panel;  // where it is edited, as the same value may be seen twice
  ValuePlace place;
  std::string text;
  bool isText = false;  // and not a number
  bool isNew = true;    // it has no keyboard focus yet
};

std::optional<Edit> gEdit;
std::string gProblem;

// Of the element, where one is meant.
std::optional<DataRefValue> ReadAt(const ValuePlace& place) {
  std::optional<DataRefValue> value = ReadDataRef(place.name);
  if (!value || !place.element) return value;
  const auto* const numbers = std::get_if<std::vector<double>>(&*value);
  const auto index = static_cast<std::size_t>(*place.element);
  if (numbers == nullptr || index >= numbers->size()) return std::nullopt;
  return (*numbers)[index];
}

std::string TextOf(const DataRefValue& value, int types) {
  if (const auto* const number = std::get_if<double>(&value)) return NumberText(*number, types);
  if (const auto* const text = std::get_if<std::string>(&value)) return *text;
  std::vector<std::string> texts;
  for (const double number : std::get<std::vector<double>>(value)) texts.push_back(NumberText(number, types));
  return fmt::format("[{}]", fmt::join(texts, ", "));
}

std::optional<double> NumberOf(const std::string& text) {
  double number = 0.0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

void Write(const Edit& edit) {
  nlohmann::json write = {{"name", edit.place.name}};
  if (edit.isText) {
    write["value"] = edit.text;
  } else if (const std::optional<double> number = NumberOf(edit.text)) {
    write["value"] = *number;
  } else {
    gProblem = fmt::format("\"{}\" is no number", edit.text);
    return;
  }
  if (edit.place.element) write["index"] = *edit.place.element;
  Ask({{"writeDataRef", std::move(write)}}, gProblem);
}

void DrawField() {
  ImGui::SetNextItemWidth(-1.0F);
  if (gEdit->isNew) ImGui::SetKeyboardFocusHere();
  const bool isDone = ImGui::InputText(
      "##edit", &gEdit->text, ImGuiInputTextFlags_EnterReturnsTrue | ImGuiInputTextFlags_AutoSelectAll);
  MarkField(gEdit->panel, "field " + PlaceText(gEdit->place), gEdit->text);
  if (isDone) Write(*gEdit);
  if (isDone || (!gEdit->isNew && ImGui::IsItemDeactivated())) return gEdit.reset();
  gEdit->isNew = gEdit->isNew && !ImGui::IsItemActive();
}

}  // namespace

std::string PlaceText(const ValuePlace& place) {
  return place.element ? fmt::format("{}[{}]", place.name, *place.element) : place.name;
}

std::optional<double> ReadNumber(const ValuePlace& place) {
  const std::optional<DataRefValue> value = ReadAt(place);
  const double* const number = value ? std::get_if<double>(&*value) : nullptr;
  return number != nullptr ? std::optional(*number) : std::nullopt;
}

std::string NumberText(double number, int types) {
  if ((types & VYRA_TYPE_DOUBLE) != 0) return fmt::format("{}", number);
  if ((types & (VYRA_TYPE_FLOAT | VYRA_TYPE_FLOAT_ARRAY)) != 0)
    return fmt::format("{}", static_cast<float>(number));
  return fmt::format("{:.0f}", number);
}

void DrawValue(const char* panel, const ValuePlace& place, int types, bool isWritable) {
  ImGui::PushID(PlaceText(place).c_str());
  if (gEdit && gEdit->place == place && gEdit->panel == panel) {
    DrawField();
  } else if (const std::optional<DataRefValue> value = ReadAt(place)) {
    const std::string text = TextOf(*value, types);
    const bool isWhole = !std::holds_alternative<std::vector<double>>(*value);
    const bool isClicked = ImGui::Selectable((text + "###value").c_str());
    MarkWidget(panel, "value " + PlaceText(place));
    if (isClicked && isWritable && isWhole)
      gEdit = Edit{.panel = panel,
                   .place = place,
                   .text = text,
                   .isText = std::holds_alternative<std::string>(*value)};
  }
  ImGui::PopID();
}

const std::string& WriteProblem() { return gProblem; }

void EndEditing() {
  gEdit.reset();
  gProblem.clear();
}

}  // namespace sim
