// The Vorel window under a monkey: random clicks, keys and typed texts on random cells, headers
// and controls, with the host's undo and redo in between. Nothing may crash, hang (a watchdog
// aborts with the seed and event number when one event takes too long) or make Qt warn.
// VOREL_RANDOM_SEED and VOREL_MONKEY_EVENTS choose the run (randomRuns.h).
#include "qtWarnings.h"
#include "randomRuns.h"
#include "vorelSession.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QMainWindow>
#include <QMenu>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <gtest/gtest.h>
#include <iostream>
#include <mutex>
#include <random>
#include <thread>

namespace {

// Aborts the process when beat() has not been called for `limit`, naming the last event.
class Watchdog {
public:
    explicit Watchdog(std::chrono::seconds limit) : thread([this, limit] { watch(limit); }) {}
    ~Watchdog() {
        {
            std::lock_guard<std::mutex> lock(mutex);
            stopping = true;
        }
        wake.notify_one();
        thread.join();
    }
    void beat(unsigned event) {
        lastEvent = event;
        beats.fetch_add(1);
    }

private:
    void watch(std::chrono::seconds limit) {
        std::unique_lock<std::mutex> lock(mutex);
        unsigned long seen = beats.load();
        while (!wake.wait_for(lock, limit, [this] { return stopping; })) {
            if (beats.load() == seen) {
                std::fprintf(stderr, "the window hangs at monkey event %u\n", lastEvent.load());
                std::abort();
            }
            seen = beats.load();
        }
    }

    std::mutex mutex;
    std::condition_variable wake;
    bool stopping = false;
    std::atomic<unsigned long> beats{0};
    std::atomic<unsigned> lastEvent{0};
    std::thread thread;
};

class WindowMonkey : public vorel::VorelWindowTest {
protected:
    unsigned pick(unsigned low, unsigned high) {
        return std::uniform_int_distribution<unsigned>(low, high)(random);
    }
    template <typename T> T pickOf(const QList<T>& list) {
        return list.at(int(pick(0, unsigned(list.size() - 1))));
    }

    QWidget* anyVisibleWidget() {
        QList<QWidget*> visible;
        for (QWidget* widget : window->findChildren<QWidget*>())
            if (widget->isVisible() && widget->isEnabled() && !widget->size().isEmpty())
                visible.append(widget);
        return visible.isEmpty() ? nullptr : pickOf(visible);
    }
    QPoint anyPointIn(const QWidget* widget) {
        return QPoint(int(pick(0, unsigned(widget->width() - 1))),
                      int(pick(0, unsigned(widget->height() - 1))));
    }

    void clickSomewhere(QWidget* target) {
        const Qt::MouseButton buttons[] = {Qt::LeftButton, Qt::LeftButton, Qt::RightButton};
        const Qt::KeyboardModifiers modifiers[] = {Qt::NoModifier, Qt::NoModifier,
                                                   Qt::ShiftModifier, Qt::ControlModifier};
        const QPoint at = anyPointIn(target);
        if (pick(0, 5) == 0)
            QTest::mouseDClick(target, Qt::LeftButton, modifiers[pick(0, 3)], at);
        else
            QTest::mouseClick(target, buttons[pick(0, 2)], modifiers[pick(0, 3)], at);
    }

    // Cells and headers get most of the clicks: that is where the editing happens.
    QWidget* anyTarget() {
        switch (pick(0, 4)) {
        case 0:
        case 1:
            return table->viewport();
        case 2:
            return pick(0, 1) ? table->horizontalHeader()->viewport()
                              : table->verticalHeader()->viewport();
        default:
            return anyVisibleWidget();
        }
    }

    void pressKey() {
        const Qt::Key keys[] = {Qt::Key_0,      Qt::Key_5,     Qt::Key_Period, Qt::Key_Plus,
                                Qt::Key_Equal,  Qt::Key_Minus, Qt::Key_Return, Qt::Key_Enter,
                                Qt::Key_Escape, Qt::Key_Tab,   Qt::Key_Up,     Qt::Key_Down,
                                Qt::Key_Left,   Qt::Key_Right, Qt::Key_Delete, Qt::Key_Backspace,
                                Qt::Key_Z,      Qt::Key_Y,     Qt::Key_A,      Qt::Key_Space,
                                Qt::Key_F2,     Qt::Key_Home};
        const Qt::KeyboardModifiers modifiers[] = {Qt::NoModifier, Qt::NoModifier,
                                                   Qt::ControlModifier, Qt::ShiftModifier,
                                                   Qt::KeypadModifier};
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : table, keys[pick(0, 21)], modifiers[pick(0, 4)]);
    }

    void typeText() {
        const char* texts[] = {"0.5",      "+=0.1", "-=0.25", "*=2", "/=0", "1",
                               "0",        "abc",   "-3",     "1e9", "nan", "2",
                               "0.333333", "",      "5=1",    "  ",  "1,5"};
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClicks(focus ? focus : table, texts[pick(0, 16)]);
        if (pick(0, 1))
            QTest::keyClick(focus ? focus : table, Qt::Key_Return);
    }

    // An open menu takes one of its entries or is closed.
    void answerPopup() {
        QWidget* popup = QApplication::activePopupWidget();
        QMenu* menu = qobject_cast<QMenu*>(popup);
        if (!popup)
            return;
        if (menu && !menu->actions().isEmpty() && pick(0, 2) != 0) {
            QAction* action = pickOf(menu->actions());
            menu->close();
            // An entry that asks in a dialog of its own waits there for an answer: the dialog
            // is closed as soon as its own event loop runs.
            QTimer::singleShot(0, [] {
                if (QWidget* modal = QApplication::activeModalWidget())
                    modal->close();
            });
            action->trigger();
        } else {
            popup->close();
        }
    }

    void oneEvent() {
        switch (pick(0, 9)) {
        case 0:
        case 1:
        case 2:
        case 3:
            if (QWidget* target = anyTarget())
                clickSomewhere(target);
            break;
        case 4:
        case 5:
            pressKey();
            break;
        case 6:
        case 7:
            typeText();
            break;
        case 8:
            vorel::run(pick(0, 1) ? "undo" : "redo");
            break;
        default:
            selectAndLoad(pick(0, 1) ? "body arm" : "body.vtx[1] body.vtx[2] arm");
        }
        answerPopup();
        QCoreApplication::processEvents();
        if (!window->isVisible())
            vorel::run("vorelCmd");
    }

    std::mt19937 random;
};

} // namespace

TEST_F(WindowMonkey, SurvivesRandomClicksKeysAndTexts) {
    const unsigned seed = vorel::randomRunSetting("VOREL_RANDOM_SEED", 1);
    const unsigned events = vorel::randomRunSetting("VOREL_MONKEY_EVENTS", 1500);
    random.seed(seed);
    fixture::SkinnedMeshOptions options;
    options.seed = seed;
    options.vertices = 6;
    options.joints = 4;
    options.weightsPerVertex = 3;
    fixture::makeSkinnedMesh(options);
    options.name = "arm";
    options.joints = 2;
    fixture::makeSkinnedMesh(options);
    window->show();
    selectAndLoad("body arm");

    vorel::QtWarningCatcher warnings;
    Watchdog watchdog(std::chrono::seconds(60));
    unsigned warned = 0;
    for (unsigned event = 1; event <= events; ++event) {
        watchdog.beat(event);
        oneEvent();
        for (const std::string& warning : warnings.take()) {
            ++warned;
            ADD_FAILURE() << "seed " << seed << " event " << event << ": Qt warned: " << warning;
        }
    }
    std::cout << "window monkey: " << events << " events, " << warned << " Qt warnings (seed "
              << seed << ")" << std::endl;
}
