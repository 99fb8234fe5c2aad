#include "Translation.h"

#include <QCoreApplication>
#include <QFile>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>

namespace kestrel {
namespace {

QString folder() {
    return QStringLiteral(":/translations");
}

bool isEnglish(const QString& language) {
    const QString name = language.section(u'-', 0, 0);
    // "C" is the language if the user has set none.
    return name == QStringLiteral("en") || name == QStringLiteral("C");
}

} // namespace

Translation::Translation() {
    // Without translations, the system's languages need not be queried.
    if (QFile::exists(folder())) {
        install(QLocale().uiLanguages(), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    }
}

Translation::Translation(const QStringList& languages, const QString& qtFolder) {
    install(languages, qtFolder);
}

void Translation::install(const QStringList& languages, const QString& qtFolder) {
    for (const QString& language : languages) {
        if (install(language, qtFolder) || isEnglish(language)) {
            return;
        }
    }
}

bool Translation::install(const QString& language, const QString& qtFolder) {
    const QLocale locale(language);
    const QString separator = QStringLiteral("_");
    if (!texts_.load(locale, QStringLiteral("kestrel"), separator, folder())) {
        return false;
    }
    QCoreApplication::installTranslator(&texts_);
    if (qtTexts_.load(locale, QStringLiteral("qtbase"), separator, qtFolder)) {
        QCoreApplication::installTranslator(&qtTexts_);
    }
    // Never set to LeftToRight: the user may have asked for right-to-left.
    if (locale.textDirection() == Qt::RightToLeft) {
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    }
    return true;
}

} // namespace kestrel
