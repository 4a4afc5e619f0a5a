#include "ui/tallyrunapplication.h"

#include "refusal/refusal.h"
#include "ui/controls/wheelguard.h"

#include <QMessageBox>
#include <QMetaEnum>

#include <exception>
#include <typeinfo>
#include <utility>

Q_LOGGING_CATEGORY(lcEventLoop, "tallyrun.eventloop")

namespace {
QString deliveryText(QObject* receiver, QEvent* event)
{
    const char* eventName = QMetaEnum::fromType<QEvent::Type>().valueToKey(event->type());
    return QStringLiteral("%1 event to %2 \"%3\"")
        .arg(eventName ? QString::fromLatin1(eventName) : QString::number(int(event->type())),
             QLatin1String(receiver ? receiver->metaObject()->className() : "nothing"),
             receiver ? receiver->objectName() : QString());
}

void showWarning(const QString& message)
{
    QMessageBox::warning(QApplication::activeWindow(), QStringLiteral("Brindle"), message);
}
} // namespace

TallyrunApplication::TallyrunApplication(int& argc, char** argv)
    : QApplication(argc, argv)
    , m_presenter(showWarning)
{
    installEventFilter(new WheelGuard(this));
}

TallyrunApplication* TallyrunApplication::instance()
{
    return qobject_cast<TallyrunApplication*>(QCoreApplication::instance());
}

TallyrunApplication::MessagePresenter TallyrunApplication::setMessagePresenter(MessagePresenter presenter)
{
    Q_ASSERT(presenter);
    return std::exchange(m_presenter, std::move(presenter));
}

QString TallyrunApplication::unexpectedFailureMessage()
{
    return QStringLiteral("Something went wrong, so that was not done. Try it again; if it keeps happening, "
                          "restart Brindle.");
}

bool TallyrunApplication::notify(QObject* receiver, QEvent* event)
{
    // Views catch what they expect; what gets here was missed by one, and is still better shown
    // than left to end the program with the sale half-rung on screen.
    try {
        return QApplication::notify(receiver, event);
    } catch (const Refusal& refusal) {
        qCWarning(lcEventLoop).noquote() << "Refusal" << typeid(refusal).name() << "reached the event loop in"
                                         << deliveryText(receiver, event) << ":" << refusal.description();
        present(refusal.description());
    } catch (const std::exception& error) {
        qCCritical(lcEventLoop).noquote() << typeid(error).name() << "reached the event loop in"
                                          << deliveryText(receiver, event) << ":" << error.what();
        present(unexpectedFailureMessage());
    } catch (...) {
        qCCritical(lcEventLoop).noquote() << "Something that is no exception reached the event loop in"
                                          << deliveryText(receiver, event);
        present(unexpectedFailureMessage());
    }
    return false;
}

void TallyrunApplication::present(const QString& message)
{
    // A failure while the message is up (a paint of the box that throws again) would otherwise
    // stack boxes without end; it is in the log.
    if (m_presenting)
        return;
    m_presenting = true;
    try {
        m_presenter(message);
    } catch (...) {
        qCCritical(lcEventLoop) << "Showing a failure failed as well";
    }
    m_presenting = false;
}
