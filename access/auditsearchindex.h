#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <optional>
#include <string>
#include <vector>

class ModelContext;

// The words of every audit entry in memory, oldest first, so that a search over years finds its
// entries in a few milliseconds where a scan of the rows takes ten times the time. Read at the
// first search and caught up with the log at each search after it changed. As the log's search
// always has, it ignores the case of the ASCII letters only.
class AuditSearchIndex : public QObject {
public:
    explicit AuditSearchIndex(ModelContext& context);

    struct Range {
        double from; // seconds, included
        double to; // seconds, excluded
        QString actionRaw; // every action when empty

        bool operator==(const Range&) const = default;
    };
    // The entries of the range whose words hold `text`, oldest first, as positions for the
    // accessors below; valid until the log changes.
    std::vector<int> matches(const Range& range, const QString& text);
    double timestamp(int entry) const { return m_log->timestamps[size_t(entry)]; }
    QString id(int entry) const;

private:
    struct Log {
        std::string words; // each entry's words, lowercased, ending in a zero byte
        std::vector<int> wordStarts{0}; // one more than there are entries: the end of the last
        std::vector<double> timestamps;
        std::string ids; // one after the other
        std::vector<int> idStarts{0}; // one more than there are entries
        std::vector<quint8> actions; // positions in actionNames
        QList<QByteArray> actionNames;
    };
    void catchUp();
    // Adds the rows of AuditSearch that `where` picks, in order, after those already read.
    void read(const QString& where, const QVariantList& bindings);

    ModelContext& m_context;
    std::optional<Log> m_log;
    bool m_stale = false;
    // The screen asks for the count and the first page of one search.
    struct Search {
        Range range;
        QString text;
        std::vector<int> found;
    };
    std::optional<Search> m_lastSearch;
};
