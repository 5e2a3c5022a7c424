// Text between program and toolkit (text.h).
#include "platform/qt/text.h"

#include "platform/codepage.h"

namespace {

QString Decoded(std::string_view bytes) { return QString::fromStdString(ToUtf8(bytes)); }

} // namespace

QString ToLines(std::string_view bytes) { return Decoded(bytes).replace("\r\n", "\n"); }

QString ToOneLine(std::string_view bytes) {
    return Decoded(bytes).replace("\r\n", " ").replace('\r', ' ').replace('\n', ' ');
}

QString AsLabel(std::string_view caption) { return Decoded(caption).replace("&&", "&"); }

QString AsMnemonic(std::string_view caption) { return AsLabel(caption).replace("&", "&&"); }

QString AsMessage(std::string_view text) {
    return Decoded(text).replace("\n\r\n\r", "\n\n").replace("\r\n", "\n").replace('\r', '\n');
}
