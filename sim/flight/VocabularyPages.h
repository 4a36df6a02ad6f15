// The vocabulary of flight files for readers: docs/flight-files.md for people, flight.schema.json for
// editors.
#pragma once

#include <string>

namespace sim {

// The page, in Markdown.
std::string VocabularyPage();

// The schema, JSON Schema of draft 7, indented.
std::string VocabularySchema();

}  // namespace sim
