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
    /// English. The toolkit's own texts are looked for in the folder, in that language too.
    Translation(const QStringList& languages, const QString& toolkitFolder);

  private:
    void install(const QStringList& languages, const QString& toolkitFolder);
    bool install(const QString& language, const QString& toolkitFolder);

    QTranslator texts_;
    QTranslator toolkitTexts_;
};

} // namespace kestrel
