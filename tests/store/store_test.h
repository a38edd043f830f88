#pragma once

#include "store_bench.h"

#include "archive/zip_writer.h"

#include <QDateTime>

#include <gtest/gtest.h>

namespace plum::test {

// The store's logic, and packages that come to it.
class StoreTest : public testing::Test
{
protected:
    // A package as the downloader would leave it in the program folder.
    QByteArray putPackage(const QString &name, const QByteArray &script)
    {
        ZipWriter archive;
        archive.add(QStringLiteral("main.wf"), script, QDateTime::currentDateTime());
        archive.add(QStringLiteral("pictures/a.txt"), "picture", QDateTime::currentDateTime());
        bench.files.write(name + QStringLiteral(".wfp"), archive.finish());
        return archive.finish();
    }

    // The downloader reports a complete package, and the index arrives.
    void complete(const QByteArray &index = {})
    {
        Q_EMIT bench.transfers.indexArrived(index);
        bench.transfers.end(DownloadStatus::Complete);
    }

    QByteArray script(const QString &app)
    {
        return bench.files.read(QStringLiteral("config/apps/%1/main.wf").arg(app));
    }

    StoreBench bench;
};

} // namespace plum::test
