#include "BidiText.h"

#include <QChar>
#include <QString>

namespace kestrel {

namespace {

constexpr char16_t leftToRightIsolate = u'\u2066';
constexpr char16_t rightToLeftIsolate = u'\u2067';
constexpr char16_t firstStrongIsolate = u'\u2068';
constexpr char16_t popDirectionalIsolate = u'\u2069';

} // namespace

QString bidiIsolated(const QString& text) {
    QString result(QChar{firstStrongIsolate});
    result.reserve(text.size() + 2);
    qsizetype depth = 0;
    for (const QChar character : text) {
        switch (character.unicode()) {
        case leftToRightIsolate:
        case rightToLeftIsolate:
        case firstStrongIsolate:
            ++depth;
            break;
        case popDirectionalIsolate:
            if (depth == 0) {
                result += QChar::ReplacementCharacter;
                continue;
            }
            --depth;
            break;
        default:
            break;
        }
        result += character;
    }
    result += QString(depth + 1, QChar(popDirectionalIsolate));
    return result;
}

} // namespace kestrel
