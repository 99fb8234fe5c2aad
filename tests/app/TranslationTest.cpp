#include "Translation.h"

#include "QueueView.h"
#include "Scenario.h"

#include <QApplication>
#include <QLocale>
#include <QPushButton>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

/// The program's translations are into Esperanto and Yiddish here, Qt's into Esperanto.
class TranslationTest : public ::testing::Test {
  public:
    TranslationTest(const TranslationTest&) = delete;
    TranslationTest& operator=(const TranslationTest&) = delete;

  protected:
    TranslationTest() = default;

    ~TranslationTest() override {
        QLocale::setDefault(usualLocale_);
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    /// The program's word for "Cancel" and Qt's.
    static std::string words() {
        return utf8(QueueView::tr("Cancel")) + " " +
               utf8(QCoreApplication::translate("QPlatformTheme", "Cancel"));
    }

    static std::string wordsIn(const QStringList& languages) {
        const Translation translation(languages, QStringLiteral(":/translations"));
        return words();
    }

    const QLocale usualLocale_;
};

TEST_F(TranslationTest, speaksEnglishWithoutATranslation) {
    EXPECT_EQ(wordsIn({}), "Cancel Cancel");
    EXPECT_EQ(wordsIn({QStringLiteral("C")}), "Cancel Cancel");
    EXPECT_EQ(wordsIn({QStringLiteral("zu-ZA"), QStringLiteral("zu")}), "Cancel Cancel");
}

TEST_F(TranslationTest, takesQtsTextsAlong) {
    EXPECT_EQ(wordsIn({QStringLiteral("eo")}), "Nuligi Rezigni");
}

TEST_F(TranslationTest, leavesQtInEnglishWithoutATextOfItsOwn) {
    // There is a translation of Qt, but none of the program.
    EXPECT_EQ(wordsIn({QStringLiteral("tpi")}), "Cancel Cancel");
}

TEST_F(TranslationTest, takesQtsTextsInNoOtherLanguage) {
    EXPECT_EQ(wordsIn({QStringLiteral("yi"), QStringLiteral("eo")}), "אָפּזאָגן Cancel");
}

TEST_F(TranslationTest, takesTheLanguageOfACountryForThatCountry) {
    EXPECT_EQ(wordsIn({QStringLiteral("eo-001")}), "Nuligi Rezigni");
}

TEST_F(TranslationTest, takesTheFirstLanguageThatThereIs) {
    EXPECT_EQ(wordsIn({QStringLiteral("zu"), QStringLiteral("eo"), QStringLiteral("yi")}),
              "Nuligi Rezigni");
}

TEST_F(TranslationTest, keepsToEnglishForThoseWhoPreferIt) {
    EXPECT_EQ(wordsIn({QStringLiteral("en-GB"), QStringLiteral("eo")}), "Cancel Cancel");
}

TEST_F(TranslationTest, asksTheSystemForTheLanguage) {
    QLocale::setDefault(QLocale(QLocale::Esperanto));
    const Translation translation;
    EXPECT_EQ(utf8(QueueView::tr("Cancel")), "Nuligi");
}

TEST_F(TranslationTest, endsWithItsObject) {
    EXPECT_EQ(wordsIn({QStringLiteral("eo")}), "Nuligi Rezigni");
    EXPECT_EQ(words(), "Cancel Cancel");
}

TEST_F(TranslationTest, turnsTheWindowToTheDirectionOfItsLanguage) {
    EXPECT_EQ(wordsIn({QStringLiteral("eo")}), "Nuligi Rezigni");
    EXPECT_TRUE(QApplication::isLeftToRight());
    EXPECT_EQ(wordsIn({QStringLiteral("yi")}), "אָפּזאָגן Cancel");
    EXPECT_TRUE(QApplication::isRightToLeft());
}

TEST_F(TranslationTest, hasAFormForEachCount) {
    const Translation translation({QStringLiteral("eo")}, {});
    const Scenario scenario;
    QueueView view(scenario.model);
    const auto textOf = [&view] { return utf8(find<QPushButton>(view, "startButton")->text()); };
    EXPECT_EQ(textOf(), "Konverti 0 dosierojn");
    scenario.add({"a.opus"});
    view.refresh();
    EXPECT_EQ(textOf(), "Konverti dosieron");
    scenario.add({"b.opus"});
    view.refresh();
    EXPECT_EQ(textOf(), "Konverti 2 dosierojn");
}

} // namespace
} // namespace kestrel
