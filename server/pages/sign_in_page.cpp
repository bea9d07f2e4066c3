#include "pages/sign_in_page.h"

#include <array>
#include <cctype>
#include <sstream>

namespace velmora::server {

namespace {

std::string hidden(std::string_view name, std::string_view value) {
    std::ostringstream html;
    html << R"(<input type="hidden" name=")" << name << R"(" value=")" << escapeHtml(value) << R"(">)";
    return html.str();
}

std::string percentEncoded(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string encoded;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x80 &&
            (std::isalnum(byte) || std::string_view("-._~").find(character) != std::string_view::npos)) {
            encoded += character;
        } else {
            encoded += {'%', digits[byte >> 4], digits[byte & 15]};
        }
    }
    return encoded;
}

} // namespace

HtmlPage SignInPage::render() const {
    const auto handshake = hidden("state", state) + hidden("form_token", formToken);
    std::ostringstream body;
    body << "<h1>Вход в Velmora</h1><p>После входа приложение откроется само.</p>";
    if (!problem.empty()) {
        body << R"(<p class="alarm" role="alert">)" << escapeHtml(problem) << "</p>";
    }
    if (localName) {
        body << R"(<form method="post" action="/auth">)" << handshake
             << R"(<button class="button primary" name="action" value="local">Продолжить как )"
             << escapeHtml(*localName) << R"(</button></form><div class="or">или</div>)";
    }
    body
        << R"(<form method="post" action="/auth">)" << handshake
        << R"(<label>Почта<input type="email" name="email" required maxlength="254" autocomplete="username" value=")"
        << escapeHtml(email) << R"("></label>)"
        << R"(<label>Пароль, не меньше 8 символов<input type="password" name="password" required maxlength="256" )"
        << R"(autocomplete="current-password"></label>)"
        << R"(<button class="button)" << (localName ? "" : " primary")
        << R"(" name="action" value="sign_in">Войти</button>)"
        << R"(<button class="button" name="action" value="create">Создать аккаунт</button></form>)";
    return HtmlPage::make("Вход в Velmora", {}, body.str());
}

HtmlPage signedInPage(const std::string& callbackUrl) {
    const auto url = escapeHtml(callbackUrl);
    return HtmlPage::make("Вы вошли в Velmora",
                          R"(<meta http-equiv="refresh" content="0;url=)" + url + R"(">)",
                          "<h1>Вы вошли</h1><p>Сейчас откроется приложение. Если этого не случилось, нажмите "
                          R"(кнопку. Потом эту страницу можно закрыть.</p><a class="button primary" href=")" +
                              url + R"(">Открыть Velmora</a>)");
}

HtmlPage openFromAppPage() {
    return HtmlPage::make(
        "Вход в Velmora", {},
        "<h1>Начните из приложения</h1><p>Откройте Velmora и нажмите «Войти»: приложение само "
        "откроет эту страницу.</p>");
}

std::string callbackUrl(std::string_view accessToken, std::string_view refreshToken, std::string_view state) {
    return "velmora://auth?token=" + percentEncoded(accessToken) +
           "&refresh=" + percentEncoded(refreshToken) + "&state=" + percentEncoded(state);
}

} // namespace velmora::server
