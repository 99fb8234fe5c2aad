#pragma once

#include <QStringList>
#include <QTranslator>

namespace kestrel {

/// Installs translators for the user's language while it lives; without a translation, the texts
/// stay English. Requires: an application object. Construct it before any text is translated.
class Translation {
  public:
    /// For the system's UI languages.
    Translation();

    /// For the first of these languages, such as "pt-BR", that has a translation; stops at English.
    /// Loads Qt's own translation into that language from `qtFolder`.
    Translation(const QStringList& languages, const QString& qtFolder);

  private:
    void install(const QStringList& languages, const QString& qtFolder);
    bool install(const QString& language, const QString& qtFolder);

    QTranslator texts_;
    QTranslator qtTexts_;
};

} // namespace kestrel
