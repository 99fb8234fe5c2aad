#include "FFmpegError.h"
#include "PlatformError.h"

#include <QCoreApplication>
#include <QTranslator>

#include <gtest/gtest.h>

#include <string_view>
#include <system_error>

namespace kestrel {
namespace {

/// Translates every text of Kestrel, but none of Qt, into the same sentence.
class OneSentence final : public QTranslator {
  public:
    explicit OneSentence(const char* sentence) : sentence_(QString::fromUtf8(sentence)) {
        QCoreApplication::installTranslator(this);
    }

    bool isEmpty() const override { return false; }

    QString translate(const char* context, const char*, const char*, int) const override {
        return std::string_view(context).starts_with("kestrel::") ? sentence_ : QString();
    }

  private:
    QString sentence_;
};

class TranslatedErrorTest : public ::testing::Test {
  private:
    int argumentCount_ = 0;
    QCoreApplication application_{argumentCount_, nullptr};
};

TEST_F(TranslatedErrorTest, isTranslated) {
    const OneSentence translator("%2 – „%1“");
    const auto denied = std::make_error_code(std::errc::permission_denied);
    EXPECT_STREQ(PlatformError::programLost(FileURL("/a/%2"), denied).what(),
                 "Permission denied – „/a/%2“");
    EXPECT_EQ(FFmpegError::processFailed("").errorDescription(), "%2 – „%1“");
}

TEST_F(TranslatedErrorTest, isolatesPathAndReasonInRightToLeftText) {
    const OneSentence translator("שגיאה %1: %2.");
    const auto denied = std::make_error_code(std::errc::permission_denied);
    EXPECT_STREQ(PlatformError::folderNotCreated(FileURL("/a/b"), denied).what(),
                 "שגיאה \u2068/a/b\u2069: \u2068Permission denied\u2069.");
}

TEST_F(TranslatedErrorTest, balancesTheIsolatesOfAPath) {
    const OneSentence translator("שגיאה %1: %2.");
    const auto denied = std::make_error_code(std::errc::permission_denied);
    const FileURL folder(QStringLiteral("/a\u2069b\u2067c").toStdString());
    EXPECT_STREQ(PlatformError::folderNotCreated(folder, denied).what(),
                 "שגיאה \u2068/a\uFFFDb\u2067c\u2069\u2069: \u2068Permission denied\u2069.");
}

} // namespace
} // namespace kestrel
