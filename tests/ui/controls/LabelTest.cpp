#include "Label.h"

#include "ElidedLabel.h"
#include "Scenario.h"

#include <QApplication>
#include <QImage>

#include <gtest/gtest.h>

#include <tuple>

namespace kestrel {
namespace {

/// By the size of the body font in points and the scale of the screen.
class LabelTest : public ::testing::TestWithParam<std::tuple<double, double>> {
  protected:
    void SetUp() override {
        QFont font = usual_;
        font.setPointSizeF(std::get<0>(GetParam()));
        QApplication::setFont(font);
    }

    void TearDown() override { QApplication::setFont(usual_); }

    static QImage picture(QWidget& label) {
        const double scale = std::get<1>(GetParam());
        QImage picture((QSizeF(label.size()) * scale).toSize(), QImage::Format_ARGB32);
        picture.setDevicePixelRatio(scale);
        picture.fill(Qt::transparent);
        label.render(&picture, {}, {}, {});
        return picture;
    }

    /// How much of the picture of a label of this height is not background.
    static qint64 inkAt(QWidget& label, int height) {
        label.resize(label.width(), height);
        const QImage picture = LabelTest::picture(label);
        qint64 ink = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                ink += qAlpha(picture.pixel(x, y));
            }
        }
        return ink;
    }

    static void expectWhole(QWidget& label, int height) {
        // The text moves by whole pixels of every scale.
        constexpr int more = 40;
        EXPECT_GT(inkAt(label, height), 0);
        EXPECT_EQ(inkAt(label, height), inkAt(label, height + more));
    }

    /// A label that shows the text in a width.
    static QImage pictureOf(const QString& text, int width) {
        Label label(text);
        label.resize(width, label.heightForWidth(width));
        return picture(label);
    }

    const QString tails_ = QStringLiteral("Typography, jog (Q)");

  private:
    const QFont usual_ = QApplication::font();
};

TEST_P(LabelTest, cutsNothingOffALine) {
    Label label(tails_, {TextStyle::caption});
    label.setWordWrap(false);
    label.resize(label.sizeHint());
    expectWhole(label, label.sizeHint().height());
}

TEST_P(LabelTest, cutsNothingOffWrappedLines) {
    Label label(tails_ + u' ' + tails_, {TextStyle::caption});
    label.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label.resize(label.minimumSizeHint());
    expectWhole(label, label.heightForWidth(label.width()));
}

TEST_P(LabelTest, cutsNothingOffALineThatIsShortened) {
    ElidedLabel label(Qt::ElideRight, {TextStyle::caption});
    label.setText(tails_);
    label.resize(label.sizeHint());
    expectWhole(label, label.sizeHint().height());
}

TEST_P(LabelTest, cutsNothingOffLinesThatAreShortened) {
    ElidedLabel label(2, {TextStyle::caption2});
    label.setText(tails_ + u'\n' + tails_ + tails_);
    label.resize(label.fontMetrics().horizontalAdvance(tails_) + 20, 1);
    expectWhole(label, label.heightForWidth(label.width()));
}

TEST_P(LabelTest, standsOnOneLineWhetherItIsShortenedOrNot) {
    Label label(tails_, {TextStyle::caption});
    label.setWordWrap(false);
    ElidedLabel elided(Qt::ElideRight, {TextStyle::caption});
    elided.setText(tails_);
    EXPECT_EQ(label.sizeHint().height(), elided.sizeHint().height());
    for (const int more : {0, 1, 2, 3}) {
        label.resize(elided.sizeHint().grownBy({0, 0, 0, more}));
        elided.resize(label.size());
        EXPECT_EQ(picture(label), picture(elided)) << more;
    }
}

TEST_P(LabelTest, startsAllLinesFromRightToLeftAtOneEdge) {
    QApplication::setLayoutDirection(Qt::RightToLeft);
    const QString word = QStringLiteral("המרה");
    const int width = Label().fontMetrics().horizontalAdvance(word + u' ' + word) - 2;
    EXPECT_EQ(pictureOf(word + u' ' + word, width), pictureOf(word + u'\n' + word, width));
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

INSTANTIATE_TEST_SUITE_P(OfSizes, LabelTest,
                         ::testing::Combine(::testing::Values(7.0, 9.0, 10.0, 11.0, 12.5, 18.0),
                                            ::testing::Values(1.0, 1.5, 2.0)));

} // namespace
} // namespace kestrel
