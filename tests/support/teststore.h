#pragma once

#include "store/modelcontainer.h"

#include <QTemporaryDir>

#include <memory>

// A fresh store file in its own temporary folder, opened with the program's schema.
class TestStore {
public:
    TestStore();

    ModelContext& context() { return m_container->mainContext(); }
    QString path() const { return m_path; }
    QString folder() const { return m_dir.path(); }

    // Inserted and saved, so that a test can tell what an operation wrote from what was there before.
    template <class T> std::shared_ptr<T> saved(std::shared_ptr<T> record)
    {
        context().insert(record);
        context().save();
        return record;
    }

    // Closes and opens the file again, so that what follows reads only what was saved.
    void reopen();
    // Closes the store; the file stays for the test to inspect.
    void close() { m_container.reset(); }

private:
    QTemporaryDir m_dir;
    QString m_path;
    std::unique_ptr<ModelContainer> m_container;
};

// Reads one number straight from the file through a connection of its own, bypassing the
// context, to see what is really on disk.
qint64 countRowsOnDisk(const QString& path, const QString& table);
