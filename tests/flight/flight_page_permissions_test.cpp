#include "flight/flight_page.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

TEST(FlightPage, IsForItsOwnerAlone)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"page.html"_s);
    ASSERT_TRUE(writeFlightPage(path, u"a"_s));
    EXPECT_FALSE(QFile::permissions(path) & (QFileDevice::ReadGroup | QFileDevice::ReadOther));
}
