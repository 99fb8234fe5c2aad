#include "Translation.h"

#include "QueueView.h"
#include "Scenario.h"

#include <QApplication>
#include <QLocale>
#include <QPushButton>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

/// With the program's translations into Esperanto and Yiddish, and Qt's into Esperanto and Tok
/// Pisin.
class TranslationTest : public ::testing::Test {
  public:
    TranslationTest(const TranslationTest&) = delete;
    TranslationTest& operator=(const TranslationTest&) = delete;

  protected:
    TranslationTest() = default;

    ~TranslationTest() override {
        QLocale::setDefault(previousLocale_);
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    /// The program's translation of "Cancel", and Qt's.
    static std::string cancelTexts() {
        return utf8(QueueView::tr("Cancel")) + " " +
               utf8(QCoreApplication::translate("QPlatformTheme", "Cancel"));
    }

    static std::string cancelTextsIn(const QStringList& languages) {
        const Translation translation(languages, QStringLiteral(":/translations"));
        return cancelTexts();
    }

    const QLocale previousLocale_;
};

TEST_F(TranslationTest, staysEnglishWithoutATranslation) {
    EXPECT_EQ(cancelTextsIn({}), "Cancel Cancel");
    EXPECT_EQ(cancelTextsIn({QStringLiteral("C")}), "Cancel Cancel");
    EXPECT_EQ(cancelTextsIn({QStringLiteral("zu-ZA"), QStringLiteral("zu")}), "Cancel Cancel");
}

TEST_F(TranslationTest, loadsQtsTranslationToo) {
    EXPECT_EQ(cancelTextsIn({QStringLiteral("eo")}), "Nuligi Rezigni");
}

TEST_F(TranslationTest, leavesQtInEnglishWithoutATranslationOfItsOwn) {
    // There is a translation of Qt, but none of the program.
    EXPECT_EQ(cancelTextsIn({QStringLiteral("tpi")}), "Cancel Cancel");
}

TEST_F(TranslationTest, loadsQtsTranslationInNoOtherLanguage) {
    EXPECT_EQ(cancelTextsIn({QStringLiteral("yi"), QStringLiteral("eo")}), "אָפּזאָגן Cancel");
}

TEST_F(TranslationTest, usesTheLanguageForItsTerritories) {
    EXPECT_EQ(cancelTextsIn({QStringLiteral("eo-001")}), "Nuligi Rezigni");
}

TEST_F(TranslationTest, usesTheFirstAvailableLanguage) {
    EXPECT_EQ(cancelTextsIn({QStringLiteral("zu"), QStringLiteral("eo"), QStringLiteral("yi")}),
              "Nuligi Rezigni");
}

TEST_F(TranslationTest, stopsAtEnglish) {
    EXPECT_EQ(cancelTextsIn({QStringLiteral("en-GB"), QStringLiteral("eo")}), "Cancel Cancel");
}

TEST_F(TranslationTest, usesTheSystemsUiLanguages) {
    QLocale::setDefault(QLocale(QLocale::Esperanto));
    const Translation translation;
    EXPECT_EQ(utf8(QueueView::tr("Cancel")), "Nuligi");
}

TEST_F(TranslationTest, isRemovedOnDestruction) {
    EXPECT_EQ(cancelTextsIn({QStringLiteral("eo")}), "Nuligi Rezigni");
    EXPECT_EQ(cancelTexts(), "Cancel Cancel");
}

TEST_F(TranslationTest, setsTheLayoutDirectionOfItsLanguage) {
    EXPECT_EQ(cancelTextsIn({QStringLiteral("eo")}), "Nuligi Rezigni");
    EXPECT_TRUE(QApplication::isLeftToRight());
    EXPECT_EQ(cancelTextsIn({QStringLiteral("yi")}), "אָפּזאָגן Cancel");
    EXPECT_TRUE(QApplication::isRightToLeft());
}

TEST_F(TranslationTest, usesPluralForms) {
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
