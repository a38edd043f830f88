#include "flight/secrets.h"

#include "support/printers.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

TEST(Secrets, AreTakenOutOfTexts)
{
    Secrets secrets;
    EXPECT_EQ(secrets.without(u"hunter2"_s), u"hunter2"_s);
    secrets.add(u"hunter2"_s);
    secrets.add(u"ab"_s);
    EXPECT_EQ(secrets.without(u"hunter2"_s), Secrets::mark);
    EXPECT_EQ(secrets.without(u"is hunter2!"_s), u"is "_s + Secrets::mark + u'!');
    EXPECT_EQ(secrets.without(u"ab"_s), Secrets::mark);
    EXPECT_EQ(secrets.without(u"cab"_s), u"cab"_s);
    EXPECT_EQ(secrets.without({}), QString());
}

TEST(Secrets, HideEverythingWhenTheyAreTooMany)
{
    Secrets secrets;
    for (int n = 0; n < 2000; ++n)
        secrets.add(QString::number(n));
    EXPECT_EQ(secrets.without(u"anything"_s), Secrets::mark);
    secrets.clear();
    EXPECT_EQ(secrets.without(u"anything"_s), u"anything"_s);
}
