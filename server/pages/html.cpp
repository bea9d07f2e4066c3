#include "pages/html.h"

#include "accounts/random_token.h"

#include <sstream>

namespace velmora::server {

namespace {

constexpr std::string_view style = R"css(
:root { color-scheme: light dark; --ground: #f4f4f7; --card: #fff; --text: #1d1d24; --soft: #6c6c7a;
        --line: #dcdce4; --accent: #5b4be1; --on-accent: #fff; --alarm: #c0273d; --alarm-ground: #fdecef;
        --done: #17703f; --done-ground: #e6f5ec; }
@media (prefers-color-scheme: dark) {
  :root { --ground: #131318; --card: #1e1e26; --text: #f0f0f5; --soft: #9c9cab; --line: #36363f;
          --accent: #8a7dff; --on-accent: #14121f; --alarm: #ff8b9b; --alarm-ground: #3a1d24;
          --done: #7fdca4; --done-ground: #16301f; } }
* { box-sizing: border-box; }
body { margin: 0; min-height: 100vh; display: grid; place-items: center; padding: 24px;
       background: var(--ground); color: var(--text); font: 16px/1.5 system-ui, "Noto Sans", sans-serif; }
main { width: 100%; max-width: 380px; background: var(--card); border: 1px solid var(--line);
       border-radius: 18px; padding: 32px; }
main.text { max-width: 680px; }
.brand { display: flex; align-items: center; gap: 10px; font-weight: 600; color: var(--soft); }
.brand svg { color: var(--accent); }
h1 { font-size: 24px; line-height: 1.25; margin: 18px 0 6px; }
h2 { font-size: 17px; line-height: 1.35; margin: 28px 0 6px; }
p { margin: 0 0 20px; color: var(--soft); }
.name { color: var(--text); overflow-wrap: anywhere; }
article p, article ul { margin: 0 0 14px; color: var(--text); }
article ul { padding-left: 20px; }
article li { margin-bottom: 8px; }
article :last-child { margin-bottom: 0; }
code { padding: 1px 5px; border-radius: 5px; background: var(--ground); font: 0.9em ui-monospace, monospace; }
label { display: block; font-size: 14px; color: var(--soft); margin-bottom: 14px; }
input { display: block; width: 100%; margin-top: 4px; padding: 11px 13px; font: inherit; color: var(--text);
        background: transparent; border: 1px solid var(--line); border-radius: 10px; }
.button { display: block; width: 100%; padding: 12px; margin-top: 10px; font: inherit; font-weight: 600;
          text-align: center; text-decoration: none; border-radius: 10px; cursor: pointer;
          border: 1px solid var(--line); background: transparent; color: var(--text); }
.button.primary { background: var(--accent); border-color: var(--accent); color: var(--on-accent); }
input:focus-visible, .button:focus-visible { outline: 2px solid var(--accent); outline-offset: 2px; }
.alarm { padding: 11px 13px; border-radius: 10px; color: var(--alarm); background: var(--alarm-ground); }
.notice { padding: 11px 13px; border-radius: 10px; color: var(--done); background: var(--done-ground); }
.or { display: flex; align-items: center; gap: 12px; margin: 22px 0; font-size: 14px; color: var(--soft); }
.or::before, .or::after { content: ""; flex: 1; border-top: 1px solid var(--line); }
)css";

constexpr std::string_view brand =
    R"(<div class="brand"><svg width="22" height="22" viewBox="0 0 22 22" fill="currentColor" aria-hidden="true">)"
    R"(<rect x="1" y="8" width="3" height="6" rx="1.5"/><rect x="6" y="4" width="3" height="14" rx="1.5"/>)"
    R"(<rect x="11" y="1" width="3" height="20" rx="1.5"/><rect x="16" y="6" width="3" height="10" rx="1.5"/>)"
    R"(</svg>Velmora</div>)";

} // namespace

std::string escapeHtml(std::string_view text) {
    std::string safe;
    for (const char character : text) {
        switch (character) {
        case '&':
            safe += "&amp;";
            break;
        case '<':
            safe += "&lt;";
            break;
        case '>':
            safe += "&gt;";
            break;
        case '"':
            safe += "&quot;";
            break;
        case '\'':
            safe += "&#39;";
            break;
        default:
            safe += character;
        }
    }
    return safe;
}

HtmlPage HtmlPage::make(std::string_view title, std::string_view head, std::string_view body,
                        PageWidth width) {
    const auto nonce = randomToken();
    std::ostringstream html;
    html << R"(<!DOCTYPE html><html lang="ru"><head><meta charset="utf-8">)"
         << R"(<meta name="viewport" content="width=device-width, initial-scale=1"><title>)"
         << escapeHtml(title) << "</title>" << head << R"(<style nonce=")" << nonce << R"(">)" << style
         << "</style></head><body><main" << (width == PageWidth::Text ? R"( class="text")" : "") << '>'
         << brand << body << "</main></body></html>\n";
    return {html.str(), "default-src 'none'; style-src 'nonce-" + nonce +
                            "'; form-action 'self'; base-uri 'none'; frame-ancestors 'none'"};
}

} // namespace velmora::server
