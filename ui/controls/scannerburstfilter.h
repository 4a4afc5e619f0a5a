#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QString>

class QLineEdit;

// Tells a barcode scanner from a person at the keyboard. A scanner is a keyboard that types a
// whole code within a few milliseconds and ends it with Return; a person never keeps several keys
// that close together. On a form where a scan means a mistake (the payment sheet), a burst is
// refused: the field it went into gets back what it held before, and its Return goes nowhere, so
// it can't press the form's default button.
class ScannerBurstFilter : public QObject {
    Q_OBJECT

public:
    // A scanner's keys come 1 to 10 ms apart; a fast typist's rarely under 50.
    static constexpr qint64 maxGapMs = 25;
    // Shorter runs can be two keys rolled over by hand; no product code is this short.
    static constexpr int minLength = 4;

    explicit ScannerBurstFilter(QObject* parent = nullptr);

    // Watches a field, or a window for the keys that reach it past its buttons.
    void watch(QObject* target);

Q_SIGNALS:
    // A burst ended in Return and was undone; `typed` is what the scanner sent.
    void burstRefused(const QString& typed);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QElapsedTimer m_clock;
    qint64 m_lastKeyMs = -1;
    QString m_run;
    QPointer<QLineEdit> m_runField;
    QString m_before; // the field's text as the run began
};
