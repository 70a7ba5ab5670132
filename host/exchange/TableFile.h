// Files of tables that this program writes and reads: .csv, .tsv and .json, see host/exchange/SetTable.h and
// SetJson.h.
#pragma once

#include <afx.h>

#include <filesystem>
#include <optional>
#include <string>

#include "host/exchange/SetTable.h"

namespace host {

enum class TableFormat { csv, tsv, json };

// By the ending of its name, whatever its case.
[[nodiscard]] std::optional<TableFormat> tableFormatOf(const CString& path);

[[nodiscard]] TableSet readTableText(std::string_view text, TableFormat format, const std::string& name);

// Throws std::runtime_error, which names the file by `name`, when it cannot be read, is larger than 256 MiB,
// or is no table; and what an allocation throws.
[[nodiscard]] TableSet readTableFile(const std::filesystem::path& path, TableFormat format,
                                     const std::string& name);

// Adds the dipoles of a table to a set, behind those that it has, whole or not at all; marks what they leave
// unknown by their slots in it. Unit, patient and version become those of the file as far as it names them.
// Returns how many came. Throws as readTableFile, with a text that does not name the file, also when the set
// has no room for all.
int addTable(CDipoleFace9File& set, const CString& path, UnknownValues& unknown);

// Patient and version as the set has them. Throws std::runtime_error that names the file and the cause.
void writeTable(const CDipoleFace& set, const UnknownValues& unknown, const CString& path);

}  // namespace host
