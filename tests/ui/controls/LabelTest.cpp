#include "Label.h"

#include "ElidedLabel.h"
#include "Scenario.h"

#include <QApplication>
#include <QImage>

#include <gtest/gtest.h>

#include <tuple>

namespace kestrel {
namespace {

/// Parameters: application font size in points, device pixel ratio.
class LabelTest : public ::testing::TestWithParam<std::tuple<double, double>> {
  protected:
    void SetUp() override {
        QFont font = originalFont_;
        font.setPointSizeF(std::get<0>(GetParam()));
        QApplication::setFont(font);
    }

    void TearDown() override { QApplication::setFont(originalFont_); }

    static QImage picture(QWidget& label) {
        const double scale = std::get<1>(GetParam());
        QImage picture((QSizeF(label.size()) * scale).toSize(), QImage::Format_ARGB32);
        picture.setDevicePixelRatio(scale);
        picture.fill(Qt::transparent);
        label.render(&picture, {}, {}, {});
        return picture;
    }

    /// The sum of the alpha values of a label of this height.
    static qint64 totalAlpha(QWidget& label, int height) {
        label.resize(label.width(), height);
        const QImage picture = LabelTest::picture(label);
        qint64 alpha = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                alpha += qAlpha(picture.pixel(x, y));
            }
        }
        return alpha;
    }

    static void expectUnclipped(QWidget& label, int height) {
        // Moves the centred text by whole device pixels at every ratio.
        constexpr int extraHeight = 40;
        EXPECT_GT(totalAlpha(label, height), 0);
        EXPECT_EQ(totalAlpha(label, height), totalAlpha(label, height + extraHeight));
    }

    /// The image of a label with this text and width.
    static QImage pictureOf(const QString& text, int width) {
        Label label(text);
        label.resize(width, label.heightForWidth(width));
        return picture(label);
    }

    const QString descenders_ = QStringLiteral("Typography, jog (Q)");

  private:
    const QFont originalFont_ = QApplication::font();
};

TEST_P(LabelTest, doesNotClipALine) {
    Label label(descenders_, {TextStyle::caption});
    label.setWordWrap(false);
    label.resize(label.sizeHint());
    expectUnclipped(label, label.sizeHint().height());
}

TEST_P(LabelTest, doesNotClipWrappedLines) {
    Label label(descenders_ + u' ' + descenders_, {TextStyle::caption});
    label.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label.resize(label.minimumSizeHint());
    expectUnclipped(label, label.heightForWidth(label.width()));
}

TEST_P(LabelTest, doesNotClipAnElidedLine) {
    ElidedLabel label(Qt::ElideRight, {TextStyle::caption});
    label.setText(descenders_);
    label.resize(label.sizeHint());
    expectUnclipped(label, label.sizeHint().height());
}

TEST_P(LabelTest, doesNotClipElidedLines) {
    ElidedLabel label(2, {TextStyle::caption2});
    label.setText(descenders_ + u'\n' + descenders_ + descenders_);
    label.resize(label.fontMetrics().horizontalAdvance(descenders_) + 20, 1);
    expectUnclipped(label, label.heightForWidth(label.width()));
}

TEST_P(LabelTest, hasTheSameBaselineElidedOrNot) {
    Label label(descenders_, {TextStyle::caption});
    label.setWordWrap(false);
    ElidedLabel elided(Qt::ElideRight, {TextStyle::caption});
    elided.setText(descenders_);
    EXPECT_EQ(label.sizeHint().height(), elided.sizeHint().height());
    for (const int more : {0, 1, 2, 3}) {
        label.resize(elided.sizeHint().grownBy({0, 0, 0, more}));
        elided.resize(label.size());
        EXPECT_EQ(picture(label), picture(elided)) << more;
    }
}

TEST_P(LabelTest, alignsRightToLeftLinesAtOneEdge) {
    QApplication::setLayoutDirection(Qt::RightToLeft);
    const QString word = QStringLiteral("המרה");
    const int width = Label().fontMetrics().horizontalAdvance(word + u' ' + word) - 2;
    EXPECT_EQ(pictureOf(word + u' ' + word, width), pictureOf(word + u'\n' + word, width));
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

INSTANTIATE_TEST_SUITE_P(Sizes, LabelTest,
                         ::testing::Combine(::testing::Values(7.0, 9.0, 10.0, 11.0, 12.5, 18.0),
                                            ::testing::Values(1.0, 1.5, 2.0)));

TEST(LabelSizeTest, hasRoomForItsLongestWordAtLeast) {
    const Label label(QStringLiteral("a longest word"), {});
    const int longest = QFontMetrics(label.font()).horizontalAdvance(QStringLiteral("longest"));
    EXPECT_EQ(label.minimumSizeHint(), QSize(longest + 1, lineHeight(label.font())));
}

TEST(LabelSizeTest, isAsLargeAsItsTextWithoutWrapping) {
    Label label(QStringLiteral("one line and\nanother"), {});
    const QFontMetrics metrics(label.font());
    const int line = lineHeight(label.font());
    const QRect bounds = metrics.boundingRect(QRect(0, 0, 9999, 0), 0, label.text());
    EXPECT_EQ(label.sizeHint(), QSize(bounds.width() + 1, 2 * line));
    EXPECT_EQ(label.heightForWidth(bounds.width() + 1), 2 * line);
    EXPECT_EQ(label.heightForWidth(metrics.horizontalAdvance(QStringLiteral("another")) + 1),
              3 * line);
    label.setWordWrap(false);
    EXPECT_EQ(label.minimumSizeHint(), label.sizeHint());
    EXPECT_EQ(label.heightForWidth(1), 2 * line);
    label.setText({});
    EXPECT_EQ(label.sizeHint().height(), line);
}

TEST(LabelSizeTest, wrapsOnceTheLineAndAPixelDoNotFit) {
    const Label label(QStringLiteral("one line"), {});
    const int line = lineHeight(label.font());
    const int width = label.sizeHint().width();
    EXPECT_EQ(label.heightForWidth(width), line);
    EXPECT_EQ(label.heightForWidth(width - 2), 2 * line);
}

TEST(LabelSizeTest, breaksAtEverySeparatorHoweverWideItIs) {
    for (const QChar separator : {QChar(u'\n'), QChar(QChar::LineSeparator)}) {
        const Label label(QStringLiteral("one") + separator + QStringLiteral("two"), {});
        EXPECT_EQ(label.heightForWidth(9999), 2 * lineHeight(label.font()))
            << static_cast<int>(separator.unicode());
    }
}

TEST(LabelSizeTest, followsItsTextAndItsFont) {
    Label label(QStringLiteral("a"), {});
    const QSize small = label.sizeHint();
    label.setText(QStringLiteral("a longer text"));
    const QSize wide = label.sizeHint();
    EXPECT_GT(wide.width(), small.width());
    EXPECT_EQ(wide.height(), small.height());
    label.setFont(systemFont(40));
    EXPECT_GT(label.sizeHint().width(), wide.width());
    EXPECT_GT(label.heightForWidth(9999), wide.height());
}

TEST(LabelSizeTest, doesNotDrawATrailingSpace) {
    const auto picture = [](const QString& text) {
        Label label(text);
        label.setAlignment(Qt::AlignRight | Qt::AlignTop);
        label.resize(200, 40);
        return label.grab().toImage();
    };
    EXPECT_EQ(picture(QStringLiteral("text ")), picture(QStringLiteral("text")));
}

TEST(LabelColorTest, isPalerWhileDisabled) {
    Label label(QStringLiteral("text"), {});
    label.setPalette(QPalette(QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE)));
    EXPECT_EQ(label.color().alpha(), 255);
    label.setEnabled(false);
    EXPECT_NEAR(label.color().alphaF(), 0.4, 0.005);
    label.setThemeColor(ThemeColor(ThemeColor::Name::purple).withOpacity(0.5));
    EXPECT_NEAR(label.color().alphaF(), 0.2, 0.005);
    EXPECT_EQ(label.color().rgb(), qRgb(0x95, 0x40, 0xC8));
}

} // namespace
} // namespace kestrel
