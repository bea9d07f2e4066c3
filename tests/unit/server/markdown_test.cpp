#include "pages/markdown.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

TEST(Markdown, Constructs_BecomeTheirElements) {
    const std::vector<std::pair<std::string, std::string>> table{
        {"", ""},
        {"one\ntwo\n\nthree", "<p>one two</p><p>three</p>"},
        {"# Changes\n## 0.1.0 (unreleased)", "<h1>Changes</h1><h2>0.1.0 (unreleased)</h2>"},
        {"- one\n  and more\n- two\n\nafter", "<ul><li>one and more</li><li>two</li></ul><p>after</p>"},
        {"- one\n\n- two\n", "<ul><li>one</li><li>two</li></ul>"},
        {"text\n- one", "<p>text</p><ul><li>one</li></ul>"},
        {"- one\n# Next", "<ul><li>one</li></ul><h1>Next</h1>"},
        {"run `make run` **now**", "<p>run <code>make run</code> <b>now</b></p>"},
        {"`a **b**`", "<p><code>a **b**</code></p>"},
        {"a ` b ** c", "<p>a ` b ** c</p>"},
        {"#tag, 7 - 2", "<p>#tag, 7 - 2</p>"},
    };
    for (const auto& [markdown, html] : table) {
        EXPECT_EQ(markdownToHtml(markdown), html) << markdown;
    }
}

TEST(Markdown, Html_IsText) {
    const auto html = markdownToHtml("# <b>\n- <script>\n\n`<i>` **&** <img src=\"x\">");
    EXPECT_EQ(html,
              "<h1>&lt;b&gt;</h1><ul><li>&lt;script&gt;</li></ul><p><code>&lt;i&gt;</code> <b>&amp;</b> "
              "&lt;img src=&quot;x&quot;&gt;</p>");
}

} // namespace
} // namespace velmora::server
