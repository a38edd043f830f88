#include "modules/store/remembered_files.h"

#include "library/safe_file.h"
#include "store_index/role_files.h"

#include <QFile>

#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

struct KeptFile
{
    Role role;
    QByteArray TrustedStore::Files::*content;
};

constexpr std::array keptFiles{
    KeptFile{Role::Root, &TrustedStore::Files::root},
    KeptFile{Role::Index, &TrustedStore::Files::index},
    KeptFile{Role::Timestamp, &TrustedStore::Files::timestamp},
};

QString pathOf(const QString &folder, Role role)
{
    return folder + u'/' + roleName(role) + ".txt"_L1;
}

} // namespace

TrustedStore::Files rememberedFiles(const QString &systemFolder)
{
    TrustedStore::Files files;
    for (const KeptFile &each : keptFiles) {
        QFile file(pathOf(systemFolder, each.role));
        if (file.open(QIODevice::ReadOnly))
            files.*each.content = file.readAll();
    }
    return files;
}

void rememberFiles(const QString &systemFolder, const TrustedStore::Files &files)
{
    const TrustedStore::Files before = rememberedFiles(systemFolder);
    for (const KeptFile &each : keptFiles) {
        const QString path = pathOf(systemFolder, each.role);
        if (files.*each.content == before.*each.content)
            continue;
        if ((files.*each.content).isEmpty())
            QFile::remove(path);
        else
            replaceFile(path, files.*each.content);
    }
}

} // namespace plum
