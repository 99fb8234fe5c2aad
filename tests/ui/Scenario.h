#pragma once

#include "ConverterViewModel.h"
#include "Gate.h"
#include "ScriptedPanel.h"
#include "ScriptedRunner.h"
#include "ScriptedViewer.h"

#include <QCoreApplication>
#include <QTest>

#include <initializer_list>
#include <memory>
#include <string>

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
        auto surroundings = ConverterViewModel::Surroundings{
            runner, [] { return FileURL("/usr/bin/ffmpeg"); }, std::make_unique<ScriptedPanel>(),
            std::make_unique<ScriptedViewer>()};
        panel = static_cast<ScriptedPanel*>(surroundings.openPanel.get());
        viewer = static_cast<ScriptedViewer*>(surroundings.fileViewer.get());
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
        panel->titles.clear();
        settle();
    }

    /// Makes the conversion of the file report a fraction and wait at the gate.
    void holdBack(const std::string& name, double progress) {
        runner->scripts[name] = [this, progress](const ConversionRunner::ProgressHandler& report) {
            report(progress);
            gate.pass();
        };
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

    Gate gate;
    std::shared_ptr<ScriptedRunner> runner = std::make_shared<ScriptedRunner>();
    ScriptedPanel* panel = nullptr;
    ScriptedViewer* viewer = nullptr;
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
