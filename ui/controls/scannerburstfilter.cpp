#include "ui/controls/scannerburstfilter.h"

#include <QKeyEvent>
#include <QLineEdit>

ScannerBurstFilter::ScannerBurstFilter(QObject* parent)
    : QObject(parent)
{
    m_clock.start();
}

void ScannerBurstFilter::watch(QObject* target)
{
    target->installEventFilter(this);
}

bool ScannerBurstFilter::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    // A scanner holds Shift for capitals: that belongs to the code, not a pause in it.
    switch (key->key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_Meta:
        return false;
    default:
        break;
    }
    const qint64 now = m_clock.elapsed();
    const bool close = m_lastKeyMs >= 0 && now - m_lastKeyMs <= maxGapMs;
    m_lastKeyMs = now;

    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        const bool burst = close && m_run.size() >= minLength;
        const QString typed = m_run;
        m_run.clear();
        m_lastKeyMs = -1;
        if (!burst)
            return false;
        if (m_runField && m_runField->text() != m_before) {
            // As an edit, not setText, so that whatever follows the field's edits hears it too.
            m_runField->selectAll();
            m_runField->insert(m_before);
        }
        Q_EMIT burstRefused(typed);
        return true;
    }

    const QString text = key->text();
    const bool printable = !text.isEmpty() && text.at(0).isPrint() &&
                           !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (!printable) {
        m_run.clear();
        return false;
    }
    if (!close || m_run.isEmpty()) {
        m_run.clear();
        m_runField = qobject_cast<QLineEdit*>(watched);
        m_before = m_runField ? m_runField->text() : QString();
    }
    m_run += text;
    return false;
}
