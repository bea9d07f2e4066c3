#include "pages/markdown.h"

#include "pages/html.h"

#include <sstream>

namespace velmora::server {

namespace {

constexpr std::size_t deepestHeading = 4;

/// Puts what stands between two marks into an element; a mark without its fellow is text.
std::string inlineHtml(std::string_view text) {
    std::string html;
    while (!text.empty()) {
        const auto at = std::min(text.find('`'), text.find("**"));
        if (at == std::string_view::npos) {
            return html + escapeHtml(text);
        }
        html += escapeHtml(text.substr(0, at));
        text.remove_prefix(at);
        const bool isCode = text.front() == '`';
        const std::string_view mark = isCode ? "`" : "**";
        const auto end = text.find(mark, mark.size());
        if (end == std::string_view::npos) {
            html += mark;
            text.remove_prefix(mark.size());
            continue;
        }
        const auto inner = text.substr(mark.size(), end - mark.size());
        html += isCode ? "<code>" + escapeHtml(inner) + "</code>" : "<b>" + escapeHtml(inner) + "</b>";
        text.remove_prefix(end + mark.size());
    }
    return html;
}

std::size_t headingLevel(std::string_view line) {
    const auto level = line.find_first_not_of('#');
    return level != std::string_view::npos && level > 0 && level <= deepestHeading && line[level] == ' '
               ? level
               : 0;
}

std::string_view withoutIndent(std::string_view line) {
    return line.substr(std::min(line.find_first_not_of(' '), line.size()));
}

/// Gathers lines into blocks.
class Blocks {
public:
    void add(std::string_view line) {
        const auto text = withoutIndent(line);
        if (const auto level = headingLevel(line)) {
            closeList();
            m_html << "<h" << level << '>' << inlineHtml(withoutIndent(line.substr(level))) << "</h" << level
                   << '>';
        } else if (text.starts_with("- ")) {
            close();
            m_html << (m_inList ? "" : "<ul>");
            m_inList = true;
            m_element = "li";
            m_text = text.substr(2);
        } else if (text.empty()) {
            close();
        } else if (m_element.empty()) {
            closeList();
            m_element = "p";
            m_text = text;
        } else {
            m_text += ' ';
            m_text += text;
        }
    }

    [[nodiscard]] std::string finish() {
        closeList();
        return m_html.str();
    }

private:
    void close() {
        if (!m_element.empty()) {
            m_html << '<' << m_element << '>' << inlineHtml(m_text) << "</" << m_element << '>';
        }
        m_element = {};
    }
    void closeList() {
        close();
        m_html << (m_inList ? "</ul>" : "");
        m_inList = false;
    }

    std::ostringstream m_html;
    /// The one being gathered, empty for none.
    std::string_view m_element;
    std::string m_text;
    bool m_inList = false;
};

} // namespace

std::string markdownToHtml(std::string_view text) {
    Blocks blocks;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        blocks.add(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return blocks.finish();
}

} // namespace velmora::server
