// What the user sees of the search, and which flights its trials are.
#include "bisect/Bisect.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string_view>

#include "bisect/Candidates.h"
#include "bisect/Failure.h"
#include "bisect/Search.h"
#include "choice/ChildFlight.h"
#include "choice/PluginPattern.h"
#include "report/Report.h"

namespace sim {
namespace {

std::string Counted(std::size_t count, std::string_view thing) {
  return fmt::format("{} {}{}", count, thing, count == 1 ? "" : "s");
}

using Arguments = std::vector<std::string>;

class Hunt {
 public:
  explicit Hunt(const BisectOptions& wanted)
      : options(wanted),
        systemFolder(std::filesystem::absolute(wanted.systemPath + "/").lexically_normal()) {}

  int Run() {
    const FlightOutcome first = FlyUntil({}, [](const Ways& ways) { return !ways.empty(); });
    if (first.exitCode == kExitWrongInput) {
      fmt::print(stderr, "{}", first.error);
      return kExitWrongInput;
    }
    sought = WaysToLookFor(WaysOf(first), options.expectation);
    candidates = CandidatesOf(systemFolder, first.report, options.keep);
    fmt::print("all {} take part: {} ({:.2f} s)\n", Counted(candidates.size(), "plugin"),
               sought.empty() ? "passes" : "fails", first.seconds);
    for (const std::string& way : sought) fmt::print("    {}\n", way);
    Search search(candidates.size(), [this](const Trial& trial) { return Fails(trial); });
    return Conclude(search.Run());
  }

 private:
  Ways WaysOf(const FlightOutcome& outcome) const { return WaysOfFailing(outcome, options.budgetMs); }

  // Flies until a flight fails as asked for, but not more often than the options say.
  template <class Predicate>
  FlightOutcome FlyUntil(const Arguments& further, const Predicate& isEnough) {
    Arguments arguments{"--system", systemFolder};
    arguments.insert(arguments.end(), options.runArguments.begin(), options.runArguments.end());
    arguments.insert(arguments.end(), further.begin(), further.end());
    FlightOutcome outcome;
    for (int attempt = 0; attempt < options.attempts; ++attempt) {
      outcome = flights.Fly(arguments);
      ++flown;
      seconds += outcome.seconds;
      if (isEnough(WaysOf(outcome))) break;
    }
    return outcome;
  }

  // The arguments that leave out the others.
  Arguments ArgumentsFor(const Choice& choice) const {
    Arguments arguments;
    for (std::size_t i = 0; i < choice.size(); ++i) {
      if (choice[i]) continue;
      arguments.emplace_back("--skip");
      arguments.push_back(LiteralPattern(systemFolder / candidates[i].place));
    }
    return arguments;
  }

  bool AreSought(const Ways& ways) const {
    return std::ranges::any_of(ways, [this](const std::string& way) { return sought.contains(way); });
  }

  bool Fails(const Trial& trial) {
    // The flight with all of them came first, to know what to look for.
    if (trial.number == 1) return !sought.empty();
    const FlightOutcome outcome =
        FlyUntil(ArgumentsFor(trial.choice), [this](const Ways& ways) { return AreSought(ways); });
    const Ways ways = WaysOf(outcome);
    const auto takePart = static_cast<std::size_t>(std::ranges::count(trial.choice, true));
    if (takePart == 0) LeaveOutWhatNeedsNoPlugin(ways);
    const bool fails = takePart == 0 ? sought.empty() : AreSought(ways);
    fmt::print("flight {}: {}: {} ({:.2f} s); {}\n", flown, Describe(trial.choice, takePart),
               fails ? "fails" : "passes", outcome.seconds, Outlook(trial));
    return fails;
  }

  // What fails without any of them is not what one of them does.
  void LeaveOutWhatNeedsNoPlugin(const Ways& ways) {
    for (const std::string& way : ways)
      if (sought.erase(way) > 0) fmt::print("    without any plugin, too: {}\n", way);
  }

  std::string Describe(const Choice& choice, std::size_t takePart) const {
    constexpr std::size_t kMostNamed = 3;
    if (takePart == 0) return "none of them";
    if (takePart > kMostNamed) return fmt::format("{} of {}", takePart, candidates.size());
    std::vector<std::string> names;
    for (std::size_t i = 0; i < choice.size(); ++i)
      if (choice[i]) names.push_back(NameOf(candidates[i]));
    return fmt::format("{}", fmt::join(names, ", "));
  }

  std::string Outlook(const Trial& trial) const {
    if (trial.mostLeft == 0) return "the last flight";
    const auto most = static_cast<std::size_t>(trial.mostLeft) * static_cast<std::size_t>(options.attempts);
    return fmt::format("at most {} left, unless it takes {} or more together", Counted(most, "flight"),
                       trial.culpritsKnown + 2);
  }

  int Conclude(const SearchResult& result) const {
    using enum SearchResult::Outcome;
    switch (result.outcome) {
      case NoFailure:
        fmt::print("\nThe flight does not fail{}.\n",
                   options.expectation ? " at an expectation with this text" : "");
        break;
      case FailsWithoutAny:
        fmt::print("\nThe flight fails without any of the plugins as well.\n");
        break;
      case NotReproducible:
        fmt::print(
            "\nThe failure is not reproducible: the same plugins failed in one flight and passed in "
            "another. With --attempts N each choice flies up to N times.\n");
        break;
      case Found:
        TellCulprits(result);
        break;
    }
    fmt::print("{} in {:.1f} s\n", Counted(static_cast<std::size_t>(flown), "flight"), seconds);
    return result.outcome == Found ? kExitFound : kExitNotFound;
  }

  void TellCulprits(const SearchResult& result) const {
    fmt::print("\n{}:\n", result.culprits.size() == 1
                              ? "This plugin makes the flight fail"
                              : "These plugins make the flight fail together, and none "
                                "of them can be left out");
    for (const std::size_t culprit : result.culprits) {
      const Candidate& candidate = candidates[culprit];
      fmt::print("    {}{}\n", candidate.signature.empty() ? "" : candidate.signature + "  ",
                 candidate.place.string());
    }
    const char* const them = result.culprits.size() == 1 ? "it" : "them";
    fmt::print(
        "Without {} the flight {}\n", them,
        result.failsWithoutThem ? "fails as well: something else makes it fail, too" : "does not fail so");
  }

  const BisectOptions& options;
  std::filesystem::path systemFolder;
  ChildFlights flights;
  Ways sought;
  std::vector<Candidate> candidates;
  int flown = 0;
  double seconds = 0.0;
};

}  // namespace

int Bisect(const BisectOptions& options) { return Hunt(options).Run(); }

}  // namespace sim
