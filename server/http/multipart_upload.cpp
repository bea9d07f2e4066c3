#include "http/multipart_upload.h"

#include "http/http_error.h"

#include <Poco/Net/MessageHeader.h>
#include <Poco/Net/MultipartReader.h>
#include <Poco/Net/NameValueCollection.h>
#include <Poco/String.h>

#include <array>

namespace velmora::server {

namespace {

constexpr int partLimit = 16;
constexpr std::size_t longestBoundary = 70;

[[noreturn]] void refuse() {
    throw HttpError(400, "bad_multipart", "Тело запроса должно быть multipart/form-data с частью file");
}

std::string boundaryOf(const std::string& contentType) {
    std::string type;
    Poco::Net::NameValueCollection parameters;
    Poco::Net::MessageHeader::splitParameters(contentType, type, parameters);
    auto boundary = parameters.get("boundary", {});
    if (Poco::icompare(type, "multipart/form-data") != 0 || boundary.empty() ||
        boundary.size() > longestBoundary) {
        refuse();
    }
    return boundary;
}

std::string nameOf(const Poco::Net::MessageHeader& header) {
    std::string disposition;
    Poco::Net::NameValueCollection parameters;
    Poco::Net::MessageHeader::splitParameters(header.get("Content-Disposition", {}), disposition, parameters);
    return parameters.get("name", {});
}

void copy(std::istream& part, const std::function<void(std::span<const char>)>& sink) {
    std::array<char, 32 * 1024> bytes{};
    while (part.good()) {
        part.read(bytes.data(), bytes.size());
        if (const auto count = static_cast<std::size_t>(part.gcount()); count > 0 && sink) {
            sink({bytes.data(), count});
        }
    }
}

} // namespace

void receivePart(std::istream& body, const std::string& contentType, const std::string& name,
                 const std::function<void(std::span<const char>)>& sink) {
    bool found = false;
    bool complete = false;
    try {
        Poco::Net::MultipartReader reader(body, boundaryOf(contentType));
        for (int count = 0; !complete && count < partLimit; ++count) {
            Poco::Net::MessageHeader header;
            reader.nextPart(header);
            const bool wanted = nameOf(header) == name;
            if (wanted && found) {
                refuse();
            }
            found |= wanted;
            copy(reader.stream(), wanted ? sink : nullptr);
            complete = dynamic_cast<Poco::Net::MultipartInputStream&>(reader.stream()).lastPart();
            // A body that stops within a part leaves the reader unaware of it.
            if (!complete && body.peek() == std::istream::traits_type::eof()) {
                refuse();
            }
        }
    } catch (const Poco::Exception&) {
        refuse();
    }
    if (!found || !complete) {
        refuse();
    }
}

} // namespace velmora::server
