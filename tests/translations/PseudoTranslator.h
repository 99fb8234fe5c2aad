#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <QTranslator>

#include <mutex>
#include <utility>

namespace kestrel {

/// Pseudo-localisation: puts each text into brackets, lengthens it, and replaces its letters by
/// accented ones, or by Hebrew ones for right-to-left layouts. Text that keeps its plain letters is
/// not translated. Thread-safe.
class PseudoTranslator final : public QTranslator {
  public:
    /// Translates the texts of the committed template only.
    explicit PseudoTranslator(Qt::LayoutDirection direction = Qt::LeftToRight);

    bool isEmpty() const override { return false; }

    QString translate(const char* context, const char* sourceText, const char* disambiguation,
                      int n) const override;

    /// The texts requested so far that are not in the template.
    QStringList missing() const;

    /// The texts of the template.
    QStringList sources() const;

    /// At least 1.4 times as long if it has a letter. Keeps placeholders and mnemonics.
    QString translated(const QString& source) const;

  private:
    /// Context and text.
    using Key = std::pair<QString, QString>;

    const QString letters_;
    QSet<Key> texts_;
    mutable std::mutex mutex_;
    mutable QStringList missing_;
};

} // namespace kestrel
