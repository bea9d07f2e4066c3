#include "support/fake_desktop.h"
#include "ui/settings/about_model.h"

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;

namespace {

InfoDictionary siteAt(const char* address) {
    return InfoDictionary({{QStringLiteral("VelmorLandingURL"), QLatin1String(address)}});
}

} // namespace

TEST(AboutModel, Version_IsThatOfTheProgramIfItKnowsIt) {
    FakeWorkspace workspace;
    const InfoDictionary info({{QStringLiteral("CFBundleShortVersionString"), QStringLiteral("1.2.0")}});
    EXPECT_EQ(AboutModel(info, workspace).version(), QStringLiteral("Версия 1.2.0"));
    EXPECT_EQ(AboutModel(InfoDictionary({}), workspace).version(), QString());
}

TEST(AboutModel, Links_LeadToPagesOfTheSite) {
    struct Case {
        const char* site;
        const char* news;
        const char* license;
    };
    for (const Case& c : {
             Case{"https://site.test", "https://site.test/news", "https://site.test/legal/license"},
             Case{"https://site.test/", "https://site.test/news", "https://site.test/legal/license"},
             Case{"http://127.0.0.1:8791", "http://127.0.0.1:8791/news",
                  "http://127.0.0.1:8791/legal/license"},
         }) {
        FakeWorkspace workspace;
        AboutModel about(siteAt(c.site), workspace);
        EXPECT_TRUE(about.hasLinks());
        about.openNews();
        about.openLicense();
        EXPECT_THAT(workspace.opened,
                    ElementsAre(QUrl(QLatin1String(c.news)), QUrl(QLatin1String(c.license))));
    }
}

TEST(AboutModel, NoSite_NoLinks) {
    for (const char* site : {"", "not a site", "/news"}) {
        FakeWorkspace workspace;
        AboutModel about(siteAt(site), workspace);
        EXPECT_FALSE(about.hasLinks()) << site;
        about.openNews();
        EXPECT_TRUE(workspace.opened.isEmpty()) << site;
    }
}
