#include "access/auditsearchindex.h"

#include "records/auditentry.h"
#include "store/modelcontext.h"
#include "store/sqlite.h"

#include <algorithm>
#include <cstring>

namespace {

void lowercaseAscii(char* text, qsizetype size)
{
    for (qsizetype i = 0; i < size; ++i) {
        if (text[i] >= 'A' && text[i] <= 'Z')
            text[i] = char(text[i] + ('a' - 'A'));
    }
}

} // namespace

AuditSearchIndex::AuditSearchIndex(ModelContext& context)
    : m_context(context)
{
    context.onChange(this, {&AuditEntry::schema()}, [this] { m_stale = true; });
}

// Entries are only ever added, with the time they were made, so the newer ones are read on to
// the end; anything else (a clock put back, a row gone) shows in the count, and all is read again.
void AuditSearchIndex::catchUp()
{
    if (m_log && !m_stale)
        return;
    m_stale = false;
    m_lastSearch.reset();
    if (m_log && !m_log->timestamps.empty()) {
        const int last = int(m_log->timestamps.size()) - 1;
        read(QStringLiteral(" WHERE (timestamp, id) > (?, ?)"), {m_log->timestamps.back(), id(last)});
        if (m_context.scalar(QStringLiteral("SELECT COUNT(*) FROM AuditSearch")).toLongLong() ==
            qint64(m_log->timestamps.size()))
            return;
    }
    // Room made at once: growing by doubling would touch every new page of memory twice over.
    const qint64 entries = m_context.scalar(QStringLiteral("SELECT COUNT(*) FROM AuditSearch")).toLongLong();
    Log& log = m_log.emplace();
    log.words.reserve(size_t(entries * 128));
    log.ids.reserve(size_t(entries * 36));
    for (std::vector<int>* starts : {&log.wordStarts, &log.idStarts})
        starts->reserve(size_t(entries + 1));
    log.timestamps.reserve(size_t(entries));
    log.actions.reserve(size_t(entries));
    read(QString(), {});
}

void AuditSearchIndex::read(const QString& where, const QVariantList& bindings)
{
    Log& log = *m_log;
    m_context.forEachRow(
        QStringLiteral("SELECT timestamp, id, actionRaw, text FROM AuditSearch%1 ORDER BY timestamp, id").arg(where),
        bindings, [&log](const SqliteStatement& row) {
            log.timestamps.push_back(row.real(0));
            const QByteArrayView id = row.utf8(1);
            log.ids.append(id.data(), size_t(id.size()));
            log.idStarts.push_back(int(log.ids.size()));
            const QByteArrayView action = row.utf8(2);
            qsizetype known = log.actionNames.indexOf(action);
            if (known < 0) {
                known = log.actionNames.size();
                log.actionNames.append(action.toByteArray());
            }
            log.actions.push_back(quint8(known));
            const QByteArrayView words = row.utf8(3);
            const size_t start = log.words.size();
            log.words.append(words.data(), size_t(words.size()));
            lowercaseAscii(log.words.data() + start, words.size());
            log.words.push_back('\0');
            log.wordStarts.push_back(int(log.words.size()));
        });
}

std::vector<int> AuditSearchIndex::matches(const Range& range, const QString& text)
{
    catchUp();
    if (m_lastSearch && m_lastSearch->range == range && m_lastSearch->text == text)
        return m_lastSearch->found;
    const Log& log = *m_log;
    QByteArray needle = text.toUtf8();
    lowercaseAscii(needle.data(), needle.size());
    const auto first = std::lower_bound(log.timestamps.begin(), log.timestamps.end(), range.from);
    const auto last = std::lower_bound(first, log.timestamps.end(), range.to);
    const qsizetype action = range.actionRaw.isEmpty() ? -1 : log.actionNames.indexOf(range.actionRaw.toUtf8());
    std::vector<int> found;
    const char* words = log.words.data();
    const char* stop = words + log.wordStarts[size_t(last - log.timestamps.begin())];
    const char* at = words + log.wordStarts[size_t(first - log.timestamps.begin())];
    while (at < stop && (range.actionRaw.isEmpty() || action >= 0)) {
        const void* hit = memmem(at, size_t(stop - at), needle.constData(), size_t(needle.size()));
        if (!hit)
            break;
        // The entry the words found belong to; the search goes on after it.
        const auto next = std::upper_bound(log.wordStarts.begin(), log.wordStarts.end(),
                                           int(static_cast<const char*>(hit) - words));
        const int entry = int(next - log.wordStarts.begin()) - 1;
        if (action < 0 || log.actions[size_t(entry)] == action)
            found.push_back(entry);
        at = words + *next;
    }
    m_lastSearch = Search{range, text, found};
    return found;
}

QString AuditSearchIndex::id(int entry) const
{
    const int start = m_log->idStarts[size_t(entry)];
    return QString::fromUtf8(m_log->ids.data() + start, m_log->idStarts[size_t(entry) + 1] - start);
}
