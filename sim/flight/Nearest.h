// The word that somebody meant who wrote another one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sim {

// The nearest of the words, when it is near enough to be meant; otherwise "". Letters that are wrong,
// missing, too many or swapped count; upper and lower case do not differ.
std::string_view NearestWord(std::string_view written, const std::vector<std::string_view>& words);

// "; did you mean "word"?", or nothing.
std::string DidYouMean(std::string_view written, const std::vector<std::string_view>& words);

}  // namespace sim
