// Text between program and toolkit (text.h).
#include "platform/qt/text.h"

namespace {

QString Decoded(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

} // namespace

QString ToLines(std::string_view text) { return Decoded(text).replace("\r\n", "\n"); }

std::string FromToolkit(const QString &text) {
    if (text.isValidUtf16()) return text.toStdString();
    QString whole = text;
    for (qsizetype i = 0; i < whole.size(); ++i) {
        const bool pair = i + 1 < whole.size() && whole[i].isHighSurrogate() && whole[i + 1].isLowSurrogate();
        if (pair)
            ++i;
        else if (whole[i].isSurrogate())
            whole[i] = QChar::ReplacementCharacter;
    }
    return whole.toStdString();
}

QString ToOneLine(std::string_view text) {
    return Decoded(text).replace("\r\n", " ").replace('\r', ' ').replace('\n', ' ');
}

QString AsLabel(std::string_view caption) { return Decoded(caption).replace("&&", "&"); }

QString AsMnemonic(std::string_view caption) { return AsLabel(caption).replace("&", "&&"); }

QString AsMessage(std::string_view text) {
    return Decoded(text).replace("\n\r\n\r", "\n\n").replace("\r\n", "\n").replace('\r', '\n');
}
