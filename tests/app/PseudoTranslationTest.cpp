#include "Alert.h"
#include "ContentView.h"
#include "FFmpegError.h"
#include "KestrelApp.h"
#include "PlatformError.h"
#include "PseudoTranslator.h"
#include "QtOpenPanel.h"
#include "RoomForTexts.h"
#include "Scenario.h"
#include "ShownTexts.h"
#include "Timeout.h"
#include "TitleBar.h"

#include <QApplication>
#include <QFileDialog>
#include <QMenuBar>
#include <QRegularExpression>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <new>
#include <optional>
#include <ostream>
#include <system_error>
#include <tuple>

namespace kestrel {
namespace {

/// Texts that are the same in every language.
const char* const verbatim[] = {
    // File names and paths.
    "/no-such-folder/Out", "/no-such-folder", "a.opus", "b.opus", "c.opus", "d.opus", "e.opus",
    "Album", "/usr/bin/ffmpeg",
    // Formats and bit depths.
    "MP3", "AIFF", "WAV", "16-bit", "24-bit",
    // Section labels, the destination that is still to be chosen, and states.
    "OUTPUT FORMAT", "QUALITY", "PCM OPTIONS", "Choose destination…", "Ready", "Converting",
    "Complete", "Cancelled", "Failed",
    // Error messages of ffmpeg and of the system.
    "Invalid data found", "Permission denied"};

/// Whether no untranslated letters are left.
bool isTranslated(QString text) {
    static const QRegularExpression markup(QStringLiteral("<[^>]*>"));
    static const QRegularExpression letter(QStringLiteral("[A-Za-z]"));
    text.remove(markup);
    for (const char* word : verbatim) {
        text.remove(QString::fromUtf8(word));
    }
    return !text.contains(letter);
}

void expectTranslated(const std::string& text) {
    EXPECT_TRUE(isTranslated(QString::fromStdString(text))) << text;
}

/// A named state of the window.
struct State {
    const char* name;
    std::function<void(Scenario&)> prepare;
    bool hasFFmpeg = true;

    friend std::ostream& operator<<(std::ostream& stream, const State& state) {
        return stream << state.name;
    }
};

/// Jobs in every state but waiting: the second batch is converting the first one again.
void showAllStates(Scenario& scenario) {
    scenario.failWith("a.opus", "Invalid data found");
    scenario.failWith("b.opus", "");
    scenario.runner->setScript("d.opus", [](const auto&, const auto&) { throw std::bad_alloc(); });
    scenario.cancelAt("e.opus");
    scenario.add({"a.opus", "b.opus", "c.opus", "d.opus", "e.opus"});
    ASSERT_TRUE(scenario.convertAll());
    scenario.holdBack("a.opus", 0.5);
    scenario.start();
    ASSERT_TRUE(scenario.waitForProgress(0));
}

void addTwoJobs(Scenario& s) {
    s.add({"a.opus", "b.opus"});
}

std::vector<State> states() {
    return {
        {"Empty", [](Scenario&) {}},
        {"DropHighlighted", [](Scenario& s) { s.model->setIsDropTargeted(true); }},
        {"OneJob", [](Scenario& s) { s.add({"a.opus"}); }},
        {"AllJobStates", showAllStates},
        {"BatchFinished",
         [](Scenario& s) {
             s.add({"a.opus", "b.opus"});
             ASSERT_TRUE(s.convertAll());
         }},
        {"BatchStopped",
         [](Scenario& s) {
             s.cancelAt("a.opus");
             s.add({"a.opus", "b.opus"});
             ASSERT_TRUE(s.convertAll());
         }},
        {"Aiff", [](Scenario& s) { s.model->setSettings({.format = OutputFormat::aiff}); }},
        {"Wav", [](Scenario& s) { s.model->setSettings({.format = OutputFormat::wav}); }},
        {"NoFFmpeg", addTwoJobs, false},
        {"AlertWithoutJobs", [](Scenario& s) { s.model->start(); }},
        {"AlertWithoutDestination",
         [](Scenario& s) {
             s.add({"a.opus"});
             s.model->start();
         }},
        {"AlertWithoutFFmpeg",
         [](Scenario& s) { s.model->setAlertMessage(FFmpegError::notFound().errorDescription()); },
         false},
    };
}

/// The window at its minimum size, translated, in a state and a layout direction.
class PseudoTranslationTest
    : public ::testing::TestWithParam<std::tuple<State, Qt::LayoutDirection>> {
  protected:
    void SetUp() override {
        const auto& [state, direction] = GetParam();
        translator_.emplace(direction);
        QCoreApplication::installTranslator(&*translator_);
        QApplication::setLayoutDirection(direction);
        app_ = std::make_unique<KestrelApp>(scenario_.model, [hasFFmpeg = state.hasFFmpeg] {
            return hasFFmpeg ? std::optional(FileURL("/usr/bin/ffmpeg")) : std::nullopt;
        });
        window().resize(960, 640);
        window().show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window(), test::timeout));
        ASSERT_NO_FATAL_FAILURE(state.prepare(scenario_));
        settle();
        settle();
    }

    void TearDown() override {
        app_.reset();
        QApplication::setLayoutDirection(Qt::LeftToRight);
        EXPECT_EQ(utf8(translator_->missing().join(u'\n')), "") << "not in the template";
    }

    QWidget& window() { return app_->window(); }

    std::optional<PseudoTranslator> translator_;
    Scenario scenario_;
    std::unique_ptr<KestrelApp> app_;
};

TEST_P(PseudoTranslationTest, translatesEveryText) {
    const std::vector<ShownText> texts = shownTexts(window());
    EXPECT_GT(texts.size(), 50U);
    for (const ShownText& shown : texts) {
        EXPECT_TRUE(isTranslated(shown.text)) << utf8(shown.where) << ": " << utf8(shown.text);
    }
}

TEST_P(PseudoTranslationTest, showsVerbatimTextsAsTheyAre) {
    QStringList texts;
    for (const ShownText& shown : shownTexts(window())) {
        texts << shown.text;
    }
    for (const char* text : {"OUTPUT FORMAT", "QUALITY", "PCM OPTIONS", "Choose destination…"}) {
        EXPECT_TRUE(texts.contains(QString::fromUtf8(text)) ||
                    (scenario_.model->destination() && std::string(text) == "Choose destination…"))
            << text;
    }
    for (const ConversionJob& job : scenario_.model->jobs()) {
        const std::map<JobState::Case, const char*> labels = {
            {JobState::Case::waiting, "Ready"},
            {JobState::Case::converting, "Converting"},
            {JobState::Case::completed, "Complete"},
            {JobState::Case::cancelled, "Cancelled"},
            {JobState::Case::failed, "Failed"}};
        const char* label = labels.at(job.state.which());
        EXPECT_TRUE(texts.contains(QString::fromUtf8(label))) << label;
    }
}

TEST_P(PseudoTranslationTest, keepsTheWindowAtItsMinimumSize) {
    EXPECT_EQ(window().minimumSize(), QSize(960, 640));
    EXPECT_EQ(window().size(), QSize(960, 640));
}

TEST_P(PseudoTranslationTest, clipsNoText) {
    expectRoomForTexts(window());
    expectNoOverlap(window().findChild<ContentView*>());
    expectNoOverlap(window().findChild<TitleBar*>());
    for (const auto* label : window().findChildren<ElidedLabel*>()) {
        // File names and paths are elided, translations are not.
        if (label->isVisible() && label->text().startsWith(u'[')) {
            EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width())
                << describe(label);
        }
    }
    const auto* bar = window().findChild<QMenuBar*>();
    for (QAction* action : bar->actions()) {
        EXPECT_TRUE(bar->rect().contains(bar->actionGeometry(action))) << utf8(action->text());
    }
}

TEST_P(PseudoTranslationTest, clipsNothingInTheAlert) {
    auto* alert = window().findChild<Alert*>();
    ASSERT_EQ(alert != nullptr, scenario_.model->alertMessage().has_value());
    if (alert == nullptr) {
        return;
    }
    ASSERT_TRUE(waitUntilShown(*alert));
    for (const auto* label : alert->findChildren<QLabel*>()) {
        EXPECT_TRUE(label->width() >= label->minimumSizeHint().width() &&
                    label->height() >= label->heightForWidth(label->width()))
            << describe(label);
        EXPECT_TRUE(alert->rect().contains(label->geometry())) << describe(label);
    }
}

std::string nameOf(const ::testing::TestParamInfo<std::tuple<State, Qt::LayoutDirection>>& info) {
    const auto& [state, direction] = info.param;
    return std::string(state.name) + (direction == Qt::LeftToRight ? "LeftToRight" : "RightToLeft");
}

INSTANTIATE_TEST_SUITE_P(States, PseudoTranslationTest,
                         ::testing::Combine(::testing::ValuesIn(states()),
                                            ::testing::Values(Qt::LeftToRight, Qt::RightToLeft)),
                         nameOf);

/// The translator without a window.
class PseudoTranslatorTest : public ::testing::Test {
  public:
    PseudoTranslatorTest(const PseudoTranslatorTest&) = delete;
    PseudoTranslatorTest& operator=(const PseudoTranslatorTest&) = delete;

  protected:
    PseudoTranslatorTest() { QCoreApplication::installTranslator(&translator_); }

    ~PseudoTranslatorTest() override { EXPECT_EQ(utf8(translator_.missing().join(u'\n')), ""); }

    PseudoTranslator translator_;
};

TEST_F(PseudoTranslatorTest, keepsPlaceholdersAndMnemonics) {
    const auto translated = [this](const char* text) {
        return utf8(translator_.translated(QString::fromUtf8(text)));
    };
    EXPECT_EQ(translated("&File"), "[&Ƒííļéé]");
    EXPECT_EQ(translated("Convert %n Files"), "[Çóóñṽééřţ %n Ƒííļééšžžž]");
    EXPECT_EQ(translated("%1 · %2"), "[%1 · %2]");
}

TEST_F(PseudoTranslatorTest, makesTextsTwoFifthsLonger) {
    const QStringList sources = translator_.sources();
    EXPECT_GT(sources.size(), 60);
    for (const QString& source : sources) {
        if (source.contains(QRegularExpression(QStringLiteral("[A-Za-z]")))) {
            EXPECT_GE(translator_.translated(source).size() * 5, source.size() * 7) << utf8(source);
        }
    }
}

TEST_F(PseudoTranslatorTest, translatesThePanels) {
    const Scenario scenario;
    scenario.model->chooseFiles();
    scenario.model->chooseFolder();
    scenario.model->chooseDestination();
    ASSERT_EQ(scenario.panel->shown.size(), 3U);
    for (const OpenPanel::Options& options : scenario.panel->shown) {
        expectTranslated(options.title);
        expectTranslated(options.prompt);
    }
}

TEST_F(PseudoTranslatorTest, translatesTheNameFilterOfThePanel) {
    QString filter;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&filter] {
        if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
            filter = dialog->nameFilters().constFirst();
            dialog->reject();
        }
    });
    timer.start(1);
    EXPECT_EQ(runQtOpenPanel({.allowedExtensions = {"opus", "oga"}}, FileURL("/")), std::nullopt);
    EXPECT_TRUE(filter.endsWith(QStringLiteral(" (*.opus *.oga)"))) << utf8(filter);
    expectTranslated(utf8(filter.remove(QStringLiteral("(*.opus *.oga)"))));
}

TEST_F(PseudoTranslatorTest, translatesErrors) {
    const FileURL url("/no-such-folder/Out");
    const auto denied = std::make_error_code(std::errc::permission_denied);
    expectTranslated(FFmpegError::notFound().errorDescription());
    expectTranslated(FFmpegError::cancelled().errorDescription());
    expectTranslated(FFmpegError::processFailed("").errorDescription());
    expectTranslated(PlatformError::folderNotCreated(url, denied).what());
    expectTranslated(PlatformError::programNotStarted(url, denied).what());
    expectTranslated(PlatformError::programLost(url, denied).what());
}

} // namespace
} // namespace kestrel
