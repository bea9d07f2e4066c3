#include "speech/technical_terms.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

struct Spelling {
    std::string heard;
    std::string written;
};

void expectSpelled(const std::vector<Spelling>& table) {
    for (const auto& [heard, written] : table) {
        EXPECT_EQ(spellTechnicalTerms(heard), written) << heard;
    }
}

TEST(TechnicalTerms, EnglishTerms_GetTheirCapitals) {
    expectSpelled({{"github", "GitHub"},
                   {"push it to github", "push it to GitHub"},
                   {"Github", "GitHub"},
                   {"json and yaml", "JSON and YAML"},
                   {"the api returns urls", "the API returns URLs"},
                   {"javascript", "JavaScript"},
                   {"nodejs", "Node.js"},
                   {"node.js", "Node.js"},
                   {"Npm install", "npm install"},
                   {"ios and macos", "iOS and macOS"},
                   {"открой github и посмотри json", "открой GitHub и посмотри JSON"}});
}

TEST(TechnicalTerms, TermsOfTwoWords_ArePutTogether) {
    expectSpelled({{"java script", "JavaScript"},
                   {"in java script, not java", "in JavaScript, not Java"},
                   {"git hub.", "GitHub."},
                   {"(type script)", "(TypeScript)"},
                   {"node js", "Node.js"},
                   {"java, script", "Java, script"},
                   {"java (script)", "Java (script)"},
                   {"джава скрипт", "JavaScript"},
                   {"нод джиэс", "Node.js"}});
}

TEST(TechnicalTerms, WhatIsWrittenSoAlready_Stays) {
    for (const std::string text :
         {"pull request", "a pull request on GitHub", "VS Code", "hooks", "useState", "frontend", ""}) {
        EXPECT_EQ(spellTechnicalTerms(text), text);
    }
}

TEST(TechnicalTerms, EnglishWordsOfEverydaySpeech_Stay) {
    expectSpelled({{"go home and react", "go home and react"},
                   {"the rust on a swift node", "the rust on a swift node"},
                   {"a ruby in spring", "a ruby in spring"},
                   {"an angular rest", "an angular rest"},
                   {"express no slack", "express no slack"},
                   {"my sql is good", "my SQL is good"},
                   {"script for java scripts", "script for Java scripts"}});
}

TEST(TechnicalTerms, RussianTransliterations_BecomeTheTerm) {
    expectSpelled({{"реакт", "React"},
                   {"Реакт", "React"},
                   {"компонент на реакте", "компонент на React"},
                   {"залей в гитхаб", "залей в GitHub"},
                   {"нет гитхаба", "нет GitHub"},
                   {"пишу на джаве", "пишу на Java"},
                   {"знаю джаву", "знаю Java"},
                   {"тайпскриптом", "TypeScript"},
                   {"апи", "API"},
                   {"поставь линукс", "поставь Linux"}});
}

TEST(TechnicalTerms, RussianWordsWithASenseOfTheirOwn_Stay) {
    for (const std::string text :
         {"питон",   "на питоне",  "хук",        "хуки",         "джейсон", "докер",  "котлин",     "редис",
          "свифт",   "раст",       "нода",       "го",           "коммит",  "деплой", "пулреквест", "терапия",
          "реактор", "реактивный", "джавайский", "гитхабовский", "капитал", "утапи"}) {
        EXPECT_EQ(spellTechnicalTerms(text), text);
    }
}

TEST(TechnicalTerms, Punctuation_IsKept) {
    expectSpelled({{"github, gitlab.", "GitHub, GitLab."},
                   {"«гитхаб»?", "«GitHub»?"},
                   {"json…", "JSON…"},
                   {"“api” —", "“API” —"},
                   {"github's", "GitHub's"},
                   {"json-файл", "JSON-файл"},
                   {"апи-ключ,", "API-ключ,"}});
}

TEST(TechnicalTerms, PartsOfNamesAndAddresses_Stay) {
    for (const std::string text : {"github.com", "https://github.com/json", "my-json-file", "json-schema",
                                   "json_api", "ann@github.com", "node.json", "apis.json"}) {
        EXPECT_EQ(spellTechnicalTerms(text), text);
    }
}

TEST(TechnicalTerms, Blanks_AreKept) {
    expectSpelled({{" json  api ", " JSON  API "}});
}

TEST(TechnicalTerms, BrokenUtf8_IsNoDanger) {
    EXPECT_THAT(spellTechnicalTerms("\xD0 json \xFF\xFE \xE2"), testing::HasSubstr("JSON"));
}

TEST(TechnicalTerms, Examples_AreSpelledAsItSpells) {
    EXPECT_EQ(spellTechnicalTerms(technicalTermExamples()), technicalTermExamples());
}

} // namespace
} // namespace velmora::server
