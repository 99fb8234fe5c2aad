#pragma once

#include "ConverterViewModel.h"
#include "FFmpegError.h"
#include "Gate.h"
#include "RunUntil.h"
#include "ScriptedDesktop.h"
#include "ScriptedRunner.h"
#include "Timeout.h"

#include <QCoreApplication>
#include <QTest>
#include <QWidget>

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kestrel {

/// Processes all pending events, deferred deletions included.
inline void settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

/// Waits until the window is exposed and active; returns false on a timeout. Before a window is
/// exposed, the X server may still report the size it was created with, and Qt lays it out in that
/// size for a moment.
inline bool waitUntilShown(QWidget& window) {
    return QTest::qWaitForWindowExposed(&window, test::timeout) &&
           QTest::qWaitForWindowActive(&window, test::timeout);
}

/// Shows the widget in an active window and processes pending events; returns false on a timeout.
inline bool showActive(QWidget& widget) {
    widget.show();
    widget.activateWindow();
    const bool isShown = waitUntilShown(widget);
    settle();
    return isShown;
}

/// A view model with scripted dependencies, and the steps that bring it into a state. The
/// destructor cancels a batch that waits at the gate.
class Scenario {
  public:
    Scenario() {
        auto dependencies =
            ConverterViewModel::Dependencies{runner, [] { return FileURL("/usr/bin/ffmpeg"); },
                                             std::make_unique<test::ScriptedOpenPanel>(),
                                             std::make_unique<test::ScriptedFileViewer>()};
        panel = static_cast<test::ScriptedOpenPanel*>(dependencies.openPanel.get());
        viewer = static_cast<test::ScriptedFileViewer*>(dependencies.fileViewer.get());
        model = std::make_shared<ConverterViewModel>(std::move(dependencies));
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

    /// Queues `count` files, 0.opus, 1.opus and so on, of a folder that does not exist.
    void addMany(int count) const {
        std::vector<FileURL> urls;
        urls.reserve(static_cast<std::size_t>(count));
        for (int number = 0; number < count; ++number) {
            urls.emplace_back("/no-such-folder/" + std::to_string(number) + ".opus");
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

    /// Makes the conversion of the file fail with this message.
    void failWith(const std::string& name, const std::string& message) const {
        runner->setScript(name, [message](const auto&, const auto&) {
            throw FFmpegError::processFailed(message);
        });
    }

    /// Makes the conversion of the file end as if the user had cancelled it.
    void cancelAt(const std::string& name) const {
        runner->setScript(name, [](const auto&, const auto&) { throw FFmpegError::cancelled(); });
    }

    void start() const {
        if (!model->destination()) {
            chooseDestination("/no-such-folder/Out");
        }
        model->start();
        settle();
    }

    /// Waits until the job at an index reports progress; returns false on a timeout.
    bool waitForProgress(std::size_t index) const {
        return test::runUntil([this, index] { return model->jobs()[index].progress > 0; });
    }

    /// Waits for the end of the batch; returns false on a timeout.
    bool finish() const {
        const bool isOver = test::runUntil([this] { return !model->isConverting(); });
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
    // Owned by the model.
    test::ScriptedOpenPanel* panel = nullptr;
    test::ScriptedFileViewer* viewer = nullptr;
    std::shared_ptr<ConverterViewModel> model;
};

/// The descendant with this object name, or null.
template <typename Widget> Widget* find(const QWidget& parent, const char* name) {
    return parent.findChild<Widget*>(QString::fromLatin1(name));
}

/// The first visible descendant button with this text, or null.
template <typename Widget> Widget* findButton(const QWidget& parent, const char* text) {
    for (Widget* button : parent.findChildren<Widget*>()) {
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
