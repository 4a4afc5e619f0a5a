#include "ui/tallyrunapplication.h"

#include "store/storeerror.h"

#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <sqlite3.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

#include <functional>
#include <stdexcept>

namespace {
QStringList logged;

void captureLog(QtMsgType, const QMessageLogContext& context, const QString& text)
{
    if (QLatin1String(context.category) == QLatin1String("tallyrun.eventloop"))
        logged << text;
}

// Records what would have been shown, for the length of one test.
class EventLoopBackstopTest : public ::testing::Test {
protected:
    void SetUp() override
    {
#ifdef __SANITIZE_ADDRESS__
        // Much of Qt is built without exception support: a throw through its event delivery
        // skips Qt's clean-up and leaks what it held (the reason this is only a last resort).
        // Those leaks are Qt's, not this program's.
        __lsan_disable();
#endif
        logged.clear();
        previousHandler = qInstallMessageHandler(captureLog);
        previousPresenter = app().setMessagePresenter([this](const QString& message) { shown << message; });
    }
    void TearDown() override
    {
        app().setMessagePresenter(previousPresenter);
        qInstallMessageHandler(previousHandler);
#ifdef __SANITIZE_ADDRESS__
        __lsan_enable();
#endif
    }

    static TallyrunApplication& app() { return *TallyrunApplication::instance(); }

    QStringList shown;
    TallyrunApplication::MessagePresenter previousPresenter;
    QtMessageHandler previousHandler = nullptr;
};
} // namespace

TEST_F(EventLoopBackstopTest, AFailingClickIsShownAndTheWindowStaysUsable)
{
    const QString diskFull = StoreError::sentence(StoreError::Kind::diskFull);
    const struct {
        const char* name;
        std::function<void()> raise;
        QString message;     // what the person sees
        QString logMentions; // what the log must still tell a developer
    } escapes[] = {
        {"store failure", [] { throw StoreError::fromSqlite(SQLITE_FULL, "INSERT INTO Payment"); }, diskFull, diskFull},
        // Internal wording stays out of the message, but not out of the log.
        {"standard exception", [] { throw std::out_of_range("QList index 7 of 3"); },
         TallyrunApplication::unexpectedFailureMessage(), QStringLiteral("QList index 7 of 3")},
        {"not an exception at all", [] { throw 42; }, TallyrunApplication::unexpectedFailureMessage(),
         QStringLiteral("no exception")},
    };
    for (const auto& escape : escapes) {
        SCOPED_TRACE(escape.name);
        shown.clear();
        logged.clear();
        QPushButton button(QStringLiteral("Charge"));
        int clicks = 0;
        QObject::connect(&button, &QPushButton::clicked, &button, [&] {
            ++clicks;
            escape.raise();
        });
        button.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&button));

        QTest::mouseClick(&button, Qt::LeftButton);
        EXPECT_EQ(shown, QStringList{escape.message});
        ASSERT_EQ(logged.size(), 1);
        EXPECT_TRUE(logged.first().contains(escape.logMentions)) << qPrintable(logged.first());
        EXPECT_TRUE(logged.first().contains(QStringLiteral("QPushButton"))) << "names where it happened";

        // The button was left mid-click by the unwinding: it must still take the next one.
        QTest::mouseClick(&button, Qt::LeftButton);
        EXPECT_EQ(clicks, 2);
        EXPECT_EQ(shown.size(), 2);
    }
}

TEST_F(EventLoopBackstopTest, AFailureWhileTheMessageIsUpShowsNoSecondBox)
{
    struct Failing : QObject {
        bool event(QEvent*) override { throw Refusal(QStringLiteral("Printer offline.")); }
    } failing;
    // As a modal box runs its own loop, a window that fails on every paint would fail again inside
    // it; one message is enough, and a presenter that fails itself must not end the program.
    app().setMessagePresenter([&](const QString& message) {
        shown << message;
        QEvent again(QEvent::User);
        QCoreApplication::sendEvent(&failing, &again);
        throw std::runtime_error("the box could not be shown");
    });
    QEvent trigger(QEvent::User);
    EXPECT_FALSE(QCoreApplication::sendEvent(&failing, &trigger));
    EXPECT_EQ(shown, QStringList{QStringLiteral("Printer offline.")});

    // Once the first message is done with, the next failure is shown again.
    EXPECT_FALSE(QCoreApplication::sendEvent(&failing, &trigger));
    EXPECT_EQ(shown.size(), 2);
}
