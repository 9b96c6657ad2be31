#include "tools/types_command.hpp"

#include <fmt/core.h>

#include <CLI/App.hpp>
#include <algorithm>
#include <array>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tools/row_check.hpp"
#include "tools/standard_streams.hpp"
#include "tools/trouble.hpp"
#include "tools/type_names.hpp"

namespace xo::tool {
namespace {

/// One row of the table of types. What only a row with operations can answer is left open for the
/// others.
struct TypeRow {
  int id = 0;
  std::string name;
  std::string idName;
  std::string format;
  unsigned memorySize = 0;
  bool fixed = false;
  bool built = false;
  std::optional<bool> nullValue;
  std::optional<unsigned> diskSize;
};

TypeRow RowOf(XoTypeMgr& manager, int id) {
  auto const type = static_cast<char>(id);
  TypeRow row;
  row.id = id;
  row.name = manager.NameGet(type, nullptr);
  row.idName = manager.TypeIdNameGet(type, nullptr);
  row.format = manager.ExchangeFormat(type, nullptr);
  row.memorySize = manager.MemLenGet(type, 1);
  row.fixed = manager.IsFixed(type) != 0;
  row.built = HasDiskForm(manager, type);
  if (row.built) {
    row.nullValue = manager.SupportsNullValue(type) != 0;
    // Only the size of an element of fixed width is known without looking at it.
    if (row.fixed) row.diskSize = manager.DiskLenGet(type, nullptr, FormLittle, 1, FormMemory);
  }
  return row;
}

std::vector<TypeRow> AllRows() {
  XoTypeMgr manager;
  std::vector<TypeRow> rows;
  for (int id = 0; id <= kLastRow; ++id) rows.push_back(RowOf(manager, id));
  return rows;
}

std::string YesOrNo(bool value) { return value ? "yes" : "no"; }

constexpr std::size_t kColumns = 9;
using Cells = std::array<std::string, kColumns>;

Cells CellsOf(TypeRow const& row) {
  return {fmt::format("{}", row.id),
          row.name,
          row.idName,
          fmt::format("{}", row.memorySize),
          row.diskSize ? fmt::format("{}", *row.diskSize) : "-",
          YesOrNo(row.fixed),
          row.nullValue ? YesOrNo(*row.nullValue) : "-",
          YesOrNo(row.built),
          row.format};
}

std::string AsText(std::vector<TypeRow> const& rows) {
  std::vector<Cells> table{
      {"id", "name", "id name", "memory", "disk", "fixed", "null", "built", "format"}};
  for (TypeRow const& row : rows) table.push_back(CellsOf(row));
  std::array<std::size_t, kColumns> widths{};
  for (Cells const& cells : table) {
    for (std::size_t column = 0; column < kColumns; ++column) {
      widths[column] = std::max(widths[column], cells[column].size());
    }
  }
  auto const isNumber = [](std::size_t column) {
    return column == 0 || column == 3 || column == 4;
  };
  std::string text;
  for (Cells const& cells : table) {
    for (std::size_t column = 0; column + 1 < kColumns; ++column) {
      text += isNumber(column) ? fmt::format("{:>{}}  ", cells[column], widths[column])
                               : fmt::format("{:<{}}  ", cells[column], widths[column]);
    }
    text += cells.back() + '\n';
  }
  return text;
}

std::string AsJson(std::vector<TypeRow> const& rows) {
  using Json = nlohmann::ordered_json;
  auto table = Json::array();
  for (TypeRow const& row : rows) {
    table.push_back({{"id", row.id},
                     {"name", row.name},
                     {"idName", row.idName},
                     {"format", row.format},
                     {"memorySize", row.memorySize},
                     {"diskSize", row.diskSize ? Json(*row.diskSize) : Json()},
                     {"fixed", row.fixed},
                     {"nullValue", row.nullValue ? Json(*row.nullValue) : Json()},
                     {"built", row.built}});
  }
  return table.dump(2) + '\n';
}

int CheckTable() {
  RowCheck const check = CheckRows();
  for (std::string const& fault : check.faults) WriteOutput(fault + '\n');
  if (!check.faults.empty()) {
    throw Trouble(fmt::format("{} of {} questions to {} rows have a wrong answer",
                              check.faults.size(), check.questions, check.rows));
  }
  WriteOutput(
      fmt::format("{} rows, {} questions: all answers are right\n", check.rows, check.questions));
  return kDone;
}

}  // namespace

void AddTypesCommand(CLI::App& tool, std::function<int()>& command) {
  auto const json = std::make_shared<bool>(false);
  auto const check = std::make_shared<bool>(false);
  CLI::App* const types = tool.add_subcommand("types", "Show the table of types");
  CLI::Option* const asJson = types->add_flag("--json", *json, "print a JSON array");
  types
      ->add_flag("--check", *check, "ask every row for all that it can do, and look at its answers")
      ->excludes(asJson);
  types->callback([json, check, &command] {
    command = [json, check] {
      if (*check) return CheckTable();
      auto const rows = AllRows();
      WriteOutput(*json ? AsJson(rows) : AsText(rows));
      return kDone;
    };
  });
}

}  // namespace xo::tool
