// korvu-bench: measures the library beside three other clients of one stand-in service.

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "runner/duels.h"
#include "runner/footprint.h"
#include "runner/report.h"
#include "runner/rounds.h"

namespace {

constexpr auto kDescription =
    "Measures the library beside three other clients of one stand-in service: the floor (just the\n"
    "platform calls that the library makes), the limit (the fewest calls) and the peer (Asio and "
    "a\n"
    "JSON library). Run it with everything on one processor, as scripts/bench.sh does.";

constexpr auto kExitCodes =
    "Exit codes: 0 all rows are there and all bars are met; 1 a row is missing, or the run broke\n"
    "off; 2 wrong command line; 3 a bar is missed.";

// Then two new processes take their places: from pair to pair a ratio may differ by half a
// hundredth.
constexpr int kDuelsOfAPair = 40;

constexpr int kMissing = 1;
constexpr int kUsage = 2;
constexpr int kMissed = 3;

struct Options {
  int rounds = 11;
  int duels = 400;
  std::string jsonFile;
  std::string markdownFile;
  bool ignoresBars = false;
};

void Progress(const std::string& what) {
  fmt::print(stderr, "bench: {}\n", what);
  std::fflush(stderr);
}

void WriteFile(const std::string& name, const std::string& text) {
  if (name.empty()) return;
  std::ofstream file(name);
  file << text << '\n';
  if (!file.flush()) throw std::runtime_error("cannot write " + name);
}

bench::Results Run(const Options& options) {
  bench::Results results;
  bench::StandInService service;
  {
    bench::Rounds rounds(service, results);
    for (int round = 1; round <= options.rounds; ++round) {
      Progress(fmt::format("round {} of {}", round, options.rounds));
      rounds.RunOne();
    }
  }
  for (int duel = 0; duel < options.duels;) {
    Progress(fmt::format("duel {} of {}", duel + 1, options.duels));
    bench::Duels duels(service, results);
    for (int i = 0; i < kDuelsOfAPair && duel < options.duels; ++i, ++duel) duels.RunOne();
  }
  Progress("loading and queue");
  bench::MeasureLoading(results);
  bench::MeasureQueue(results);
  Progress("reconnects");
  bench::MeasureReconnects(service, results);
  Progress("connects and shutdowns");
  bench::MeasureCycles(results);
  Progress("idle");
  bench::MeasureIdle(results);
  return results;
}

int Report(const Options& options, const bench::Results& results) {
  fmt::print("{}\n", bench::Table(results));
  WriteFile(options.jsonFile, bench::AsJson(results, options.rounds).dump(2));
  WriteFile(options.markdownFile, bench::MarkdownTable(results));
  const auto missing = results.Missing();
  for (const std::string& row : missing) fmt::print("missing: {}\n", row);
  const int missed = bench::MissedBars(results);
  fmt::print("{} rows missing, {} bars missed\n", missing.size(), missed);
  if (!missing.empty()) return kMissing;
  return missed > 0 && !options.ignoresBars ? kMissed : EXIT_SUCCESS;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  Options options;
  CLI::App app(kDescription, "korvu-bench");
  app.footer(kExitCodes);
  app.add_option("--rounds", options.rounds, "how often each client takes its turn (11)")
      ->check(CLI::PositiveNumber);
  app.add_option("--duels", options.duels, "how often library and floor are compared (400)")
      ->check(CLI::PositiveNumber);
  app.add_option("--json", options.jsonFile, "file for the samples")->type_name("FILE");
  app.add_option("--markdown", options.markdownFile, "file for the table in Markdown")
      ->type_name("FILE");
  app.add_flag("--no-bar", options.ignoresBars, "end with 0 although a bar is missed");
  try {
    app.parse(argumentCount, arguments);
  } catch (const CLI::ParseError& end) {
    return app.exit(end) == 0 ? EXIT_SUCCESS : kUsage;
  }
  try {
    return Report(options, Run(options));
  } catch (const std::exception& failure) {
    fmt::print(stderr, "bench: {}\n", failure.what());
    return kMissing;
  }
}
