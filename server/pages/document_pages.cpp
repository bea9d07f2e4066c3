#include "pages/document_pages.h"

#include "pages/documents.h"
#include "pages/markdown.h"

namespace velmora::server {

namespace {

HtmlPage page(const std::string& title, std::string_view markdown) {
    return HtmlPage::make(
        title, {}, "<h1>" + title + R"(</h1><article lang="en">)" + markdownToHtml(markdown) + "</article>",
        PageWidth::Text);
}

} // namespace

HtmlPage newsPage() {
    // Its first line is its title, which the page has in the user's language.
    auto text = documents::changes;
    if (text.starts_with("# ")) {
        text.remove_prefix(std::min(text.find('\n'), text.size()));
    }
    return page("Что нового", text);
}

HtmlPage licensePage() {
    return page("Лицензия", documents::license);
}

} // namespace velmora::server
