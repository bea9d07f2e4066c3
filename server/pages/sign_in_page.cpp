#include "pages/sign_in_page.h"

#include "pages/entry_form.h"

#include <cctype>

namespace velmora::server {

namespace {

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
    const EntryForm form{.path = "/auth",
                         .hidden = hiddenField("state", state) + hiddenField("form_token", formToken),
                         .email = email,
                         .problem = problem,
                         .localName = localName,
                         .creates = true};
    return HtmlPage::make("Вход в Velmora", {},
                          "<h1>Вход в Velmora</h1><p>После входа приложение откроется само.</p>" +
                              form.render());
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
