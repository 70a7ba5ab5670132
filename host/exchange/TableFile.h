// Files of tables that this program writes and reads: .csv, .tsv and .json, see host/exchange/SetTable.h and
// SetJson.h.
#pragma once

#include <afx.h>

#include <filesystem>
#include <optional>
#include <string>

#include "host/exchange/FileKind.h"
#include "host/exchange/SetTable.h"

namespace host {

enum class TableFormat { csv, tsv, json };

// Nothing for files that are no tables.
std::optional<TableFormat> tableFormatOf(DipoleFormat format);

// All bytes of a file. Throws std::runtime_error, which names the file by `name` unless that is empty, when
// it cannot be read or is larger than 256 MiB.
std::string textOfFile(const std::filesystem::path& path, const std::string& name);

TableSet readTableText(std::string_view text, TableFormat format, const std::string& name);

// Throws std::runtime_error, which names the file by `name`, when it cannot be read, is larger than 256 MiB,
// or is no table; and what an allocation throws.
TableSet readTableFile(const std::filesystem::path& path, TableFormat format, const std::string& name);

// Patient and version as the set has them. Throws std::runtime_error that names the file and the cause.
void writeTable(const CDipoleFace& set, const UnknownValues& unknown, TableFormat format,
                const CString& path);

}  // namespace host
