#include "panel/cp1252.h"

#include "text/cp1252.h"

QString FromCp1252(const std::string& bytes) {
    QString text;
    text.reserve(static_cast<qsizetype>(bytes.size()));
    for (const unsigned char b : bytes)
        text.append(QChar(text::ToUnicode(b)));
    return text;
}

std::string ToCp1252(const QString& text) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar c : text)
        bytes.push_back(text::FromUnicode(c.unicode()));
    return bytes;
}
