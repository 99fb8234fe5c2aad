#pragma once

#include "ConverterViewModel.h"
#include "Gate.h"
#include "ScriptedDesktop.h"
#include "ScriptedRunner.h"

#include <QCoreApplication>
#include <QTest>

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace kestrel {

/// Lets everything happen that is due now.
inline void settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

/// A view model with scripted surroundings, and the steps that bring it into a state. A batch that
/// waits at the gate is cancelled when the scenario ends.
class Scenario {
  public:
    Scenario() {
        auto surroundings =
            ConverterViewModel::Surroundings{runner, [] { return FileURL("/usr/bin/ffmpeg"); },
                                             std::make_unique<test::ScriptedOpenPanel>(),
                                             std::make_unique<test::ScriptedFileViewer>()};
        panel = static_cast<test::ScriptedOpenPanel*>(surroundings.openPanel.get());
        viewer = static_cast<test::ScriptedFileViewer*>(surroundings.fileViewer.get());
        model = std::make_shared<ConverterViewModel>(std::move(surroundings));
    }

    Scenario(const Scenario&) = delete;
    Scenario& operator=(const Scenario&) = delete;

    ~Scenario() {
        model->cancel();
        gate.open();
        finish();
    }

    /// Queues files of a folder "Album" that does not exist.
    void add(std::initializer_list<std::string> names) const {
        std::vector<FileURL> urls;
        for (const std::string& name : names) {
            urls.emplace_back("/no-such-folder/Album/" + name);
        }
        model->add(urls);
        settle();
    }

    void chooseDestination(const std::string& path) const {
        panel->answer = {FileURL(path)};
        model->chooseDestination();
        panel->answer.reset();
        panel->shown.clear();
        settle();
    }

    /// Makes the conversion of the file report a fraction and wait at the gate.
    void holdBack(const std::string& name, double progress) {
        runner->setScript(name, [this, progress](const auto&, const auto& report) {
            report(progress);
            gate.pass();
        });
    }

    void start() const {
        if (!model->destination()) {
            chooseDestination("/no-such-folder/Out");
        }
        model->start();
        settle();
    }

    /// Waits for the end of the batch; false if it does not come.
    bool finish() const {
        const bool isOver = QTest::qWaitFor([this] { return !model->isConverting(); }, 10'000);
        settle();
        return isOver;
    }

    bool convertAll() const {
        start();
        return finish();
    }

    /// The titles of the panels shown so far.
    std::vector<std::string> panelTitles() const {
        std::vector<std::string> titles;
        for (const OpenPanel::Options& options : panel->shown) {
            titles.push_back(options.title);
        }
        return titles;
    }

    Gate gate;
    std::shared_ptr<test::ScriptedRunner> runner = std::make_shared<test::ScriptedRunner>();
    test::ScriptedOpenPanel* panel = nullptr;
    test::ScriptedFileViewer* viewer = nullptr;
    std::shared_ptr<ConverterViewModel> model;
};

/// The one descendant with this object name; null if there is none.
template <typename Widget> Widget* find(const QWidget& parent, const char* name) {
    return parent.findChild<Widget*>(QString::fromLatin1(name));
}

/// The first descendant button with this text that is in sight; null if there is none.
template <typename Button> Button* findButton(const QWidget& parent, const char* text) {
    for (Button* button : parent.findChildren<Button*>()) {
        if (button->text() == QString::fromUtf8(text) && button->isVisible()) {
            return button;
        }
    }
    return nullptr;
}

/// The text as UTF-8, for comparisons that print well.
inline std::string utf8(const QString& text) {
    return text.toStdString();
}

} // namespace kestrel
