#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <QTranslator>

#include <mutex>
#include <utility>

namespace kestrel {

/// Stands for a translation into a language whose texts are longer than the English ones: puts each
/// text into brackets, and in the place of all its letters those with accents, or for a language
/// from right to left Hebrew ones. What stays in plain letters has not been translated. Any thread.
class PseudoTranslator final : public QTranslator {
  public:
    /// Knows the texts of the committed template, and only those.
    explicit PseudoTranslator(Qt::LayoutDirection direction = Qt::LeftToRight);

    bool isEmpty() const override { return false; }

    QString translate(const char* context, const char* sourceText, const char* disambiguation,
                      int n) const override;

    /// The texts that the program asked for so far and that are not in the template.
    QStringList missing() const;

    /// The texts of the template.
    QStringList sources() const;

    /// At least 1.4 times as long, if there is a letter in it. Keeps placeholders and mnemonics.
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
