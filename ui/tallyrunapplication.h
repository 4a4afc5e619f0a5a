#pragma once

#include <QApplication>
#include <QLoggingCategory>

#include <functional>

Q_DECLARE_LOGGING_CATEGORY(lcEventLoop)

// The program's QApplication. Every event, and so every slot and handler, is delivered through
// notify(); a failure that escapes one ends there as a message instead of ending the program.
class TallyrunApplication : public QApplication {
    Q_OBJECT

public:
    // Shows a message to the person at the counter; the default is a modal warning box.
    using MessagePresenter = std::function<void(const QString& message)>;

    TallyrunApplication(int& argc, char** argv);

    static TallyrunApplication* instance();

    // Returns the presenter it replaces, so a caller can put it back.
    MessagePresenter setMessagePresenter(MessagePresenter presenter);

    bool notify(QObject* receiver, QEvent* event) override;

    // Shown for a failure that carries no words of its own.
    static QString unexpectedFailureMessage();

private:
    void present(const QString& message);

    MessagePresenter m_presenter;
    bool m_presenting = false;
};
