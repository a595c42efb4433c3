// The program's 8-bit text is Windows-1252; widgets speak QString. The two
// meet only here.
#pragma once

#include <QString>
#include <string>

QString FromCp1252(const std::string& bytes);
// Characters Windows-1252 cannot hold become '?'.
std::string ToCp1252(const QString& text);
