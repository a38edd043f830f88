#include "template_text.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::fillTemplate;

TEST(TemplateText, TextIsEscapedAndHtmlIsNot)
{
    EXPECT_EQ(fillTemplate(u"<p>{{a}}</p>{{{a}}}."_s, {{u"a"_s, u"<&\">"_s}}),
        u"<p>&lt;&amp;&quot;&gt;</p><&\">."_s);
}

TEST(TemplateText, AValueIsNeverTakenForAPlace)
{
    EXPECT_EQ(
        fillTemplate(u"{{a}} {{{b}}}"_s, {{u"a"_s, u"{{b}}"_s}, {u"b"_s, u"{{a}}"_s}}), u"{{b}} {{a}}"_s);
}

TEST(TemplateText, APlaceWithoutAValueStays)
{
    EXPECT_EQ(fillTemplate(u"{{x}}{ {"_s, {}), u"{{x}}{ {"_s);
}
