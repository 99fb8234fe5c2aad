#include "DisplayErrorHandler.h"

#include "RunInChild.h"
#include "TemporaryFolder.h"

#include <QLoggingCategory>
#include <QString>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace kestrel::test {
namespace {

const QLoggingCategory plugin("qt.qpa.plugin");

class DisplayErrorHandlerTest : public ::testing::Test {
  protected:
    /// Runs the function in a child process without a display in its environment, and returns its
    /// exit status; stderr goes to `stderrFile`.
    int run(const std::function<void()>& function) const {
        return runInChild([this, &function] {
            const int file = ::open(stderrFile.path().c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
            ::dup2(file, STDERR_FILENO);
            for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
                qunsetenv(variable);
            }
            // Whatever the environment of the test says.
            qSetMessagePattern(QStringLiteral("%{message}"));
            QLoggingCategory::setFilterRules(QString());
            function();
            return 7;
        });
    }

    std::string stderrText() const { return contents(stderrFile); }

    TemporaryFolder folder;
    FileURL stderrFile = folder.file("stderr");
};

TEST_F(DisplayErrorHandlerTest, saysThatNoDisplayIsSet) {
    EXPECT_EQ(run([] {
                  const DisplayErrorHandler handler;
                  qWarning("a warning");
                  qFatal("no plugin");
              }),
              1);
    EXPECT_EQ(stderrText(), "kestrel: no display: neither WAYLAND_DISPLAY nor DISPLAY is set\n");
}

TEST_F(DisplayErrorHandlerTest, saysWhyADisplayThatIsSetCannotBeOpened) {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        EXPECT_EQ(run([variable] {
                      qputenv(variable, "nowhere");
                      const DisplayErrorHandler handler;
                      qWarning("could not connect\n  to nowhere");
                      qCWarning(plugin, "Could not load the plugin");
                      qCWarning(plugin, "Could not find the plugin");
                      qFatal("no plugin");
                  }),
                  1);
        EXPECT_EQ(stderrText(), "kestrel: cannot open the display: could not connect to nowhere; "
                                "Could not find the plugin\n");
    }
}

TEST_F(DisplayErrorHandlerTest, saysWhatThePluginSaysIfNothingElseIsKnown) {
    EXPECT_EQ(run([] {
                  qputenv("DISPLAY", ":1");
                  const DisplayErrorHandler handler;
                  qCWarning(plugin, "Could not load the plugin");
                  qFatal("no plugin");
              }),
              1);
    EXPECT_EQ(stderrText(), "kestrel: cannot open the display: Could not load the plugin\n");
}

TEST_F(DisplayErrorHandlerTest, saysThatTheDisplayCannotBeOpenedIfNothingIsKnown) {
    EXPECT_EQ(run([] {
                  qputenv("DISPLAY", ":1");
                  const DisplayErrorHandler handler;
                  qFatal("no plugin");
              }),
              1);
    EXPECT_EQ(stderrText(), "kestrel: cannot open the display\n");
}

TEST_F(DisplayErrorHandlerTest, writesTheOtherMessagesWhenItIsDestroyed) {
    EXPECT_EQ(run([this] {
                  std::optional<DisplayErrorHandler> handler(std::in_place);
                  qWarning("one");
                  qCWarning(plugin, "two");
                  if (!stderrText().empty()) {
                      ::_exit(8);
                  }
                  handler.reset();
                  qWarning("three");
              }),
              7);
    EXPECT_EQ(stderrText(), "one\ntwo\nthree\n");
}

} // namespace
} // namespace kestrel::test
