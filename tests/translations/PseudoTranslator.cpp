#include "PseudoTranslator.h"

#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>

namespace kestrel {
namespace {

QString lettersOf(Qt::LayoutDirection direction) {
    return direction == Qt::RightToLeft ? QStringLiteral("אבגדהוזחטיכלמנסעפצקרשתךםןף")
                                        : QStringLiteral("áƀçďéƒğĥíĵķļɱñóþɋřšţúṽŵẋýž");
}

/// Maps a letter to its counterpart in `letters`, which correspond to "a" to "z"; doubles vowels.
QString stretched(QChar letter, const QString& letters) {
    const int index = letter.toLower().unicode() - u'a';
    if (index < 0 || index >= letters.size()) {
        return letter;
    }
    const QChar changed = letter.isUpper() ? letters[index].toUpper() : letters[index];
    const bool isVowel = QStringLiteral("aeiou").contains(letter.toLower());
    return isVowel ? QString(changed) + letters[index] : QString(changed);
}

} // namespace

PseudoTranslator::PseudoTranslator(Qt::LayoutDirection direction) : letters_(lettersOf(direction)) {
    QFile file(QStringLiteral(KESTREL_TEMPLATE));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("The template cannot be read");
    }
    QXmlStreamReader reader(&file);
    QString context;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (reader.name() == QStringLiteral("name")) {
            context = reader.readElementText();
        } else if (reader.name() == QStringLiteral("source")) {
            texts_.insert({context, reader.readElementText()});
        }
    }
}

QString PseudoTranslator::translate(const char* context, const char* sourceText,
                                    const char* /*disambiguation*/, int /*n*/) const {
    const Key key(QString::fromUtf8(context), QString::fromUtf8(sourceText));
    if (texts_.contains(key)) {
        return translated(key.second);
    }
    if (key.first.startsWith(QStringLiteral("kestrel::"))) {
        const std::lock_guard lock(mutex_);
        missing_ += key.first + QStringLiteral(": ") + key.second;
    }
    return {};
}

QStringList PseudoTranslator::missing() const {
    const std::lock_guard lock(mutex_);
    return missing_;
}

QStringList PseudoTranslator::sources() const {
    QStringList sources;
    for (const Key& key : texts_) {
        sources += key.second;
    }
    return sources;
}

QString PseudoTranslator::translated(const QString& source) const {
    static const QRegularExpression kept(QStringLiteral("%(L?n|L?[0-9]+)"));
    QString result;
    for (qsizetype position = 0; position < source.size();) {
        const QRegularExpressionMatch match =
            kept.match(source, position, QRegularExpression::NormalMatch,
                       QRegularExpression::AnchorAtOffsetMatchOption);
        if (match.hasMatch()) {
            result += match.captured();
            position = match.capturedEnd();
        } else {
            result += stretched(source[position++], letters_);
        }
    }
    QString rest = source;
    rest.remove(kept);
    static const QRegularExpression letter(QStringLiteral("[a-zA-Z]"));
    // Doubled vowels alone may not lengthen it enough.
    while (rest.contains(letter) && 5 * result.size() < 7 * source.size()) {
        result += letters_.back();
    }
    return u'[' + result + u']';
}

} // namespace kestrel
