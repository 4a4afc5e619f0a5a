#pragma once

#include <QAbstractItemModel>
#include <QList>

#include <algorithm>

// The rows of a long list, read a page at a time as the view scrolls to the end. Each page starts
// after the last row loaded, by its key, so a page never skips or repeats a row whatever was saved
// between two reads, and a deep page costs what the first does. `Base` is the Qt model it is (a
// list or a table); the subclass reads a page and says what its rows show.
template <class Base, class Row> class KeyPagedModel : public Base {
public:
    explicit KeyPagedModel(int pageSize, QObject* parent = nullptr)
        : Base(parent)
        , m_pageSize(pageSize)
    {
    }

    int pageSize() const { return m_pageSize; }
    const QList<Row>& rows() const { return m_rows; }

    // From the first row again, one page: after the filter changed.
    void restart() { readFromTop(m_pageSize); }
    // As far down as was loaded, in one read: after the rows changed. The row being looked at
    // stays loaded and the view stays where it was scrolled to.
    void reload() { readFromTop(std::max(int(m_rows.size()), m_pageSize)); }

    // The first row `matches` holds for, loading pages until it is found; -1 when none does.
    template <class Match> int load(Match matches)
    {
        for (int row = 0;; ++row) {
            if (row == m_rows.size()) {
                if (m_atEnd)
                    return -1;
                fetchMore({});
                if (row == m_rows.size())
                    return -1;
            }
            if (matches(m_rows[row]))
                return row;
        }
    }
    // The same among the rows loaded, reading nothing.
    template <class Match> int loaded(Match matches) const
    {
        const auto found = std::find_if(m_rows.cbegin(), m_rows.cend(), matches);
        return found == m_rows.cend() ? -1 : int(found - m_rows.cbegin());
    }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_rows.size());
    }
    bool canFetchMore(const QModelIndex& parent) const override { return !parent.isValid() && !m_atEnd; }
    void fetchMore(const QModelIndex& parent) override
    {
        if (!canFetchMore(parent))
            return;
        QList<Row> page = readAhead(m_rows.isEmpty() ? nullptr : &m_rows.last(), m_pageSize);
        if (page.isEmpty())
            return;
        this->beginInsertRows({}, int(m_rows.size()), int(m_rows.size() + page.size() - 1));
        m_rows.append(page);
        this->endInsertRows();
    }

protected:
    // At most `limit` rows after `after` in the list's order, or from the first without it.
    virtual QList<Row> readPage(const Row* after, int limit) = 0;

private:
    void readFromTop(int limit)
    {
        // Read before the reset: a read that throws leaves the view on the rows it had.
        QList<Row> rows = readAhead(nullptr, limit);
        this->beginResetModel();
        m_rows = std::move(rows);
        this->endResetModel();
    }

    // One row more than wanted tells whether any follow, without an empty read at the end.
    QList<Row> readAhead(const Row* after, int limit)
    {
        QList<Row> rows = readPage(after, limit + 1);
        m_atEnd = rows.size() <= limit;
        if (!m_atEnd)
            rows.removeLast();
        return rows;
    }

    int m_pageSize;
    QList<Row> m_rows;
    bool m_atEnd = true;
};
