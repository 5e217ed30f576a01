#include "runner/report.h"

#include <algorithm>
#include <chrono>

#include <fmt/chrono.h>
#include <fmt/format.h>

#include "support/statistics.h"

namespace bench {
namespace {

using nlohmann::json;

std::string Short(double value) {
  return fmt::format("{:.{}f}", value, value == 0 || value >= 100 || value <= -100 ? 0 : 2);
}

std::string Cell(const std::vector<double>& samples) {
  if (samples.empty()) return "missing";
  if (samples.size() == 1) return Short(samples.front());
  return fmt::format("{} ({}-{})", Short(Median(samples)), Short(std::ranges::min(samples)),
                     Short(std::ranges::max(samples)));
}

bool IsComplete(const Row& row, const Results& results) {
  return std::ranges::none_of(
      row.clients, [&](const std::string& client) { return results.Of(row.name, client).empty(); });
}

std::string VerdictText(const Verdict& verdict) {
  const std::string what = verdict.bar.against ? fmt::format(" of {}", *verdict.bar.against) : "";
  return fmt::format("{}: {:.3f}{}, at most {:.2f}", verdict.isMet ? "ok" : "MISSED", verdict.value,
                     what, verdict.bar.most);
}

// The rounds' ratios to the floor, for what leaves something out of it.
std::string RatioText(const Row& row, const std::string& client, const Results& results) {
  std::vector<double> ratios = results.Of(row.name, client);
  const std::vector<double>& floors = results.Of(row.name, kFloor);
  if (ratios.empty() || ratios.size() != floors.size()) return {};
  for (size_t round = 0; round < ratios.size(); ++round) {
    if (floors[round] <= 0) return {};
    ratios[round] /= floors[round];
  }
  return fmt::format("{:.3f} of floor", Median(ratios));
}

}  // namespace

std::string Table(const Results& results) {
  std::string table = "Median (lowest-highest)\n";
  for (const Row& row : AllRows()) {
    table += fmt::format("\n{}{}\n", row.name, row.unit.empty() ? "" : ", " + row.unit);
    for (const std::string& client : row.clients) {
      table += fmt::format("  {:<22} {:<28} {}\n", client, Cell(results.Of(row.name, client)),
                           client == kFloor ? "" : RatioText(row, client, results));
    }
    if (!IsComplete(row, results)) continue;
    for (const Verdict& verdict : Judge(row, results)) {
      table += fmt::format("  {}\n", VerdictText(verdict));
    }
  }
  return table;
}

std::string MarkdownTable(const Results& results) {
  std::string table =
      "| row | library | floor | limit | peer | bar |\n| --- | --- | --- | --- | --- | --- |\n";
  for (const Row& row : AllRows()) {
    table += fmt::format("| {}{} |", row.name, row.unit.empty() ? "" : " (" + row.unit + ")");
    for (const char* client : {kDll, kFloor, kLimit, kPeer}) {
      const bool isThere = std::ranges::find(row.clients, client) != row.clients.end();
      table += fmt::format(" {} |", isThere ? Cell(results.Of(row.name, client)) : "");
    }
    std::string verdicts;
    if (IsComplete(row, results)) {
      for (const Verdict& verdict : Judge(row, results)) {
        verdicts += (verdicts.empty() ? " " : "; ") + VerdictText(verdict);
      }
    }
    table += verdicts + " |\n";
  }
  table += "\n| row | client | value | of the floor |\n| --- | --- | --- | --- |\n";
  for (const Row& row : AllRows()) {
    for (const std::string& client : row.clients) {
      if (client == kTracing || client.starts_with("floor-without")) {
        table += fmt::format("| {} | {} | {} | {} |\n", row.name, client,
                             Cell(results.Of(row.name, client)), RatioText(row, client, results));
      }
    }
  }
  return table;
}

json AsJson(const Results& results, int rounds) {
  json rows = json::array();
  for (const Row& row : AllRows()) {
    json clients = json::object();
    for (const std::string& client : row.clients) {
      const std::vector<double>& samples = results.Of(row.name, client);
      if (samples.empty()) continue;
      clients[client] = {{"median", Median(samples)},
                         {"lowest", std::ranges::min(samples)},
                         {"highest", std::ranges::max(samples)},
                         {"samples", samples}};
    }
    json bars = json::array();
    if (IsComplete(row, results)) {
      for (const Verdict& verdict : Judge(row, results)) {
        bars.push_back({{"client", verdict.bar.client},
                        {"against", verdict.bar.against ? json(*verdict.bar.against) : json()},
                        {"most", verdict.bar.most},
                        {"value", verdict.value},
                        {"met", verdict.isMet}});
      }
    }
    rows.push_back({{"row", row.name}, {"unit", row.unit}, {"clients", clients}, {"bars", bars}});
  }
  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  return {{"date", fmt::format("{:%Y-%m-%dT%H:%M:%SZ}", now)},
          {"rounds", rounds},
          {"missing", results.Missing()},
          {"rows", rows}};
}

int MissedBars(const Results& results) {
  int missed = 0;
  for (const Row& row : AllRows()) {
    if (!IsComplete(row, results)) continue;
    missed += static_cast<int>(
        std::ranges::count(Judge(row, results), false, [](const Verdict& v) { return v.isMet; }));
  }
  return missed;
}

}  // namespace bench
