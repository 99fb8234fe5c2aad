#include "ElidedLabel.h"

#include "DisplayText.h"
#include "Scenario.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QImage>
#include <QToolTip>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

std::vector<std::string> shown(const char* text, int width, int maxLines = 2) {
    std::vector<std::string> lines;
    for (const QString& line :
         ElidedLabel::shownLines(QString::fromUtf8(text), QFont(), width, maxLines)) {
        lines.push_back(utf8(line));
    }
    return lines;
}

int widthOf(const char* text) {
    return QFontMetrics(QFont()).horizontalAdvance(QString::fromUtf8(text)) + 2;
}

TEST(ElidedLabelTest, showsAShortTextOnOneLine) {
    EXPECT_EQ(shown("short", 500), std::vector<std::string>{"short"});
}

TEST(ElidedLabelTest, showsAnEmptyTextAsOneEmptyLine) {
    EXPECT_EQ(shown("", 500), std::vector<std::string>{""});
}

TEST(ElidedLabelTest, wrapsAtWords) {
    const auto lines = shown("first words, second", widthOf("first words,  "));
    EXPECT_EQ(lines, (std::vector<std::string>{"first words,", "second"}));
}

TEST(ElidedLabelTest, breaksAtLineEnds) {
    EXPECT_EQ(shown("one\ntwo", 500), (std::vector<std::string>{"one", "two"}));
}

TEST(ElidedLabelTest, elidesWhatDoesNotFit) {
    const auto lines = shown("one\ntwo and very much more text behind it", widthOf("two and very"));
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], "one");
    EXPECT_EQ(lines[1].substr(0, 3), "two");
    EXPECT_EQ(lines[1].substr(lines[1].size() - 3), "…");
}

TEST(ElidedLabelTest, continuesTheLastLineWithTheLinesThatFollow) {
    EXPECT_EQ(shown("one\ntwo\nthree", 500), (std::vector<std::string>{"one", "two three"}));
}

TEST(ElidedLabelTest, keepsItsFullTextDespiteASmallMinimumSize) {
    ElidedLabel label(Qt::ElideMiddle, TextFont{});
    const QString path(4000, u'x');
    label.setText(path);
    EXPECT_EQ(label.text(), path);
    EXPECT_LT(label.minimumSizeHint().width(), 50);
}

TEST(ElidedLabelTest, hasRoomForAnEllipsisAtLeastAndForAShorterTextWhole) {
    ElidedLabel label(Qt::ElideRight, TextFont{});
    const QFontMetrics metrics(label.font());
    label.setText(QStringLiteral("a long text"));
    EXPECT_EQ(label.sizeHint().width(), metrics.horizontalAdvance(label.text()) + 1);
    EXPECT_EQ(label.minimumSizeHint().width(), metrics.horizontalAdvance(u'\u2026') + 1);
    label.setText(QStringLiteral("i"));
    EXPECT_EQ(label.minimumSizeHint().width(), metrics.horizontalAdvance(u'i') + 1);
}

std::string toolTipOf(ElidedLabel& label) {
    QHelpEvent event(QEvent::ToolTip, {1, 1}, label.mapToGlobal(QPoint(1, 1)));
    QCoreApplication::sendEvent(&label, &event);
    const QString text = QToolTip::text();
    QToolTip::hideText();
    return utf8(text);
}

TEST(ElidedLabelTest, showsTheFullTextAsToolTipWhenElided) {
    ElidedLabel label(Qt::ElideRight, TextFont{});
    label.setText(QStringLiteral("a <b>long</b> text that does not fit"));
    label.resize(50, 20);
    label.show();
    EXPECT_EQ(toolTipOf(label), utf8(toolTipText(label.text())));
}

TEST(ElidedLabelTest, showsNoToolTipUnlessElided) {
    ElidedLabel label(2, TextFont{});
    label.setText(QStringLiteral("two words"));
    label.resize(widthOf("words"), 60);
    label.show();
    EXPECT_EQ(toolTipOf(label), "");
}

TEST(ElidedLabelTest, drawsEachLineBelowTheLast) {
    const auto picture = [](QWidget& label) {
        QImage image(label.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        label.render(&image, {}, {}, {});
        return image;
    };
    ElidedLabel label(2, TextFont{});
    const int line = lineHeight(label.font());
    label.setText(QStringLiteral("one\nanother"));
    label.resize(200, 2 * line);
    const QImage both = picture(label);
    for (const char* text : {"one", "another"}) {
        ElidedLabel single(Qt::ElideRight, TextFont{});
        single.setText(QString::fromLatin1(text));
        single.resize(200, line);
        const int top = label.text().startsWith(single.text()) ? 0 : line;
        EXPECT_EQ(both.copy(0, top, 200, line), picture(single)) << text;
    }
}

TEST(ElidedLabelTest, elidesTheOnlyLineOfAMessageAtItsEnd) {
    const auto picture = [](ElidedLabel& label) {
        label.setText(QStringLiteral("a text that does not fit at all"));
        label.resize(80, label.sizeHint().height());
        return label.grab().toImage();
    };
    ElidedLabel message(1, TextFont{});
    ElidedLabel atTheEnd(Qt::ElideRight, TextFont{});
    ElidedLabel inTheMiddle(Qt::ElideMiddle, TextFont{});
    EXPECT_EQ(picture(message), picture(atTheEnd));
    EXPECT_NE(picture(message), picture(inTheMiddle));
    EXPECT_FALSE(message.hasHeightForWidth());
}

TEST(ElidedLabelTest, takesItsTextsWidthButNoMoreOrForAMessageAnyWidth) {
    QWidget window;
    QHBoxLayout row(&window);
    row.setContentsMargins(0, 0, 0, 0);
    ElidedLabel name(Qt::ElideRight, TextFont{}, &window);
    name.setText(QStringLiteral("name"));
    row.addWidget(&name);
    row.setGeometry(QRect(0, 0, 500, 100));
    EXPECT_EQ(name.size(), name.sizeHint());
    row.setGeometry(QRect(0, 0, 20, 100));
    EXPECT_EQ(name.width(), 20);
    row.removeWidget(&name);
    ElidedLabel message(2, TextFont{}, &window);
    message.setText(QStringLiteral("one\ntwo"));
    row.addWidget(&message);
    row.setGeometry(QRect(0, 0, 500, 100));
    EXPECT_EQ(message.width(), 500);
    EXPECT_EQ(row.minimumSize().width(), 0);
}

} // namespace
} // namespace kestrel
