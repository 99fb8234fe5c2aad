#pragma once

#include <QStringList>
#include <QTranslator>

namespace kestrel {

/// The program's texts in the user's language, as long as this lives; in English, as they are
/// written, where the program has no translation for it. Needs an application object, and comes
/// before every text.
class Translation {
  public:
    /// For the languages that the desktop says the user reads.
    Translation();

    /// For the first of these languages, such as "pt-BR", that there is a translation for. Ends at
    /// English. Qt's own texts are looked for in the folder, in that language too.
    Translation(const QStringList& languages, const QString& qtFolder);

  private:
    void install(const QStringList& languages, const QString& qtFolder);
    bool install(const QString& language, const QString& qtFolder);

    QTranslator texts_;
    QTranslator qtTexts_;
};

} // namespace kestrel
