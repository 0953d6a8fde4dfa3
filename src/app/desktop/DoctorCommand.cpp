#include "app/desktop/DoctorCommand.h"

#include "app/cli/DoctorPrinter.h"
#include "app/cli/SettleSession.h"
#include "app/cli/Terminal.h"
#include "app/cli/UnixSignals.h"
#include "app/desktop/DesktopCapture.h"
#include "app/desktop/DesktopSelfTest.h"
#include "app/desktop/HostSystem.h"
#include "app/instance/Courier.h"
#include "backend/http/CurlTransport.h"
#include "core/VorqAppState.h"
#include "platform/DesktopPlatform.h"
#include "platform/NotesBridge.h"
#include "shell/hotkeys/HotKeyHandler.h"

#include <QApplication>
#include <QLoggingCategory>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int interruptedBase = 128;
constexpr std::chrono::milliseconds settlingLimit{2000};

ReportedCheck aboutProgram(SelfCheckState state, const QString& sentence, const QString& advice) {
    return {
        .id = u"program"_s, .state = state, .sentence = sentence, .advice = advice, .details = {}};
}

ReportHead headOf(bool isOfRunningProgram) {
    return {.version = QCoreApplication::applicationVersion(),
            .isOfRunningProgram = isOfRunningProgram};
}

// Prints what the other tells, as long as it tells.
int follow(RunningInstance& instance, DoctorPrinter& printer) {
    printer.add(aboutProgram(SelfCheckState::Ok, u"Vorq runs, and tests itself."_s, {}));
    for (int number = 0;; ++number) {
        const auto told = instance.nextSelfCheck(number);
        if (!told) {
            printer.add(aboutProgram(SelfCheckState::Failed, u"Vorq ended in the midst of it."_s,
                                     u"Start Vorq, and run this again."_s));
            break;
        }
        const auto& check = *told;
        if (!check || !printer.add(*check)) break;
    }
    return printer.finish(headOf(true));
}

// Two tests at once would take the keyboard from each other.
int giveWay(const QString& sentence, DoctorPrinter& printer) {
    printer.add(aboutProgram(SelfCheckState::Failed, sentence,
                             u"Wait until that is done, and run this again."_s));
    return printer.finish(headOf(true));
}

// A Vorq of this process, without a panel and a tray.
class LoneSelfTest {
  public:
    /// The platform must outlive it. A Vorq that runs has the hot keys.
    LoneSelfTest(DesktopPlatform& platform, bool doesVorqRun)
        : m_platform(platform),
          m_hotKeys(platform.hotKeys(), platform.workspace(), platform.clock()),
          m_test({.platform = m_platform,
                  .capture = m_capture,
                  .state = m_state,
                  .hotKeys = m_hotKeys,
                  .staysAfterwards = false,
                  .areHotKeysOfAnother = doesVorqRun}) {
        if (!doesVorqRun) m_hotKeys.registerHotKeys();
    }
    LoneSelfTest(const LoneSelfTest&) = delete;
    LoneSelfTest& operator=(const LoneSelfTest&) = delete;
    ~LoneSelfTest() { m_hotKeys.unregisterHotKeys(); }

    /// Gives what ended it: 0, or more than 128 for a signal.
    int run(DoctorPrinter& printer) {
        UnixSignals unixSignals;
        SelfTest& test = m_test.test();
        int status = 0;
        QObject::connect(&unixSignals, &UnixSignals::received, &test, [&](int number) {
            status = interruptedBase + number;
            test.cancel();
        });
        QObject::connect(&test, &SelfTest::checked, &test, [&](const SelfCheck& check) {
            printer.add(reported(check, m_test.secrets()));
        });
        QObject::connect(&test, &SelfTest::finished, qApp, [] { QCoreApplication::quit(); });
        test.start();
        QCoreApplication::exec();
        settleSession(m_state.account().tokens(), m_platform.clock(), settlingLimit);
        return status;
    }

  private:
    DesktopPlatform& m_platform;
    CurlTransport m_transport{m_platform.clock()};
    PanelShowings m_showings;
    DesktopCapture m_capture{m_platform, m_showings};
    VorqAppState m_state{{m_platform.clock(), m_platform.defaults(), m_platform.paths(),
                          m_transport, m_capture, m_platform.notes()}};
    HotKeyHandler m_hotKeys;
    DesktopSelfTest m_test;
};

// Without a screen there is an application all the same, of a session without windows.
void doWithoutScreen() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    for (const char* const variable : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE"})
        qunsetenv(variable);
}

int testAlone(int& argc, char** argv, const HostSystem& system, DoctorPrinter& printer,
              std::unique_ptr<ApplicationBirth> birth, bool doesVorqRun) {
    // What it logs is for the journal of the program in the tray.
    QLoggingCategory::setFilterRules(u"vorq.*=false"_s);
    const QApplication application(argc, argv);
    birth.reset();
    int status = 0;
    {
        const std::unique_ptr<DesktopPlatform> platform = system.makePlatform();
        LoneSelfTest test(*platform, doesVorqRun);
        status = test.run(printer);
    }
    unwindTasks();
    const int outcome = printer.finish(headOf(false));
    return status > interruptedBase ? status : outcome;
}

} // namespace

int runDoctorCommand(int& argc, char** argv, const Doctor& command, const HostSystem& system) {
    Terminal terminal;
    DoctorPrinter printer(terminal,
                          command.asJson ? DoctorPrinter::Form::Json : DoctorPrinter::Form::Lines);
    std::unique_ptr<ApplicationBirth> birth;
    ReportedCheck program =
        aboutProgram(SelfCheckState::Warning, u"Vorq does not run: what it would do is tested."_s,
                     u"Start it: vorq --background"_s);
    bool doesVorqRun = false;
    {
        Courier courier;
        RunningInstance& instance = courier.instance();
        doesVorqRun = instance.exists();
        if (doesVorqRun) {
            const auto begun = instance.beginSelfTest();
            if (begun) return follow(instance, printer);
            if (begun.error().isBusy) return giveWay(begun.error().sentence, printer);
            program = aboutProgram(SelfCheckState::Failed, begun.error().sentence,
                                   u"If it hangs, end it and start it again."_s);
        }
        if (system.hasScreen())
            birth = system.prepareApplication(courier.bus());
        else
            doWithoutScreen();
    }
    printer.add(program);
    return testAlone(argc, argv, system, printer, std::move(birth), doesVorqRun);
}

} // namespace vorq
