#include "http/http_error.h"
#include "http/multipart_upload.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

constexpr auto contentType = "multipart/form-data; boundary=velmora-B";

std::string receive(const std::string& body, const std::string& type = contentType) {
    std::istringstream stream(body);
    std::string received;
    receivePart(stream, type, "file",
                [&](std::span<const char> bytes) { received.append(bytes.data(), bytes.size()); });
    return received;
}

std::string part(const std::string& name, const std::string& content) {
    return "--velmora-B\r\nContent-Disposition: form-data; name=\"" + name +
           "\"; filename=\"a.m4a\"\r\nContent-Type: audio/m4a\r\n\r\n" + content + "\r\n";
}

const std::string end = "--velmora-B--\r\n";

void expectRefused(const std::string& body, const std::string& type = contentType) {
    try {
        static_cast<void>(receive(body, type));
        ADD_FAILURE() << "accepted: " << body;
    } catch (const HttpError& error) {
        EXPECT_EQ(error.status(), 400);
        EXPECT_EQ(error.code(), "bad_multipart");
    }
}

TEST(MultipartUpload, FilePart_IsHandedOver) {
    EXPECT_EQ(receive(part("file", "sound") + end), "sound");
}

TEST(MultipartUpload, EmptyFilePart_IsEmpty) {
    EXPECT_EQ(receive(part("file", "") + end), "");
}

TEST(MultipartUpload, BinaryBytes_ComeThroughUnchanged) {
    std::string bytes;
    for (int i = 0; i < 300'000; ++i) {
        bytes += static_cast<char>(i * 7 + i / 256);
    }
    bytes += "\r\n--velmora-\r\n--velmora\r\n\r\n-";
    EXPECT_EQ(receive(part("file", bytes) + end), bytes);
}

TEST(MultipartUpload, OtherParts_AreDropped) {
    EXPECT_EQ(receive(part("note", "x") + part("file", "sound") + part("tail", "y") + end), "sound");
}

TEST(MultipartUpload, QuotedBoundary_Works) {
    EXPECT_EQ(receive(part("file", "sound") + end, "multipart/form-data; boundary=\"velmora-B\""), "sound");
}

TEST(MultipartUpload, BodyCutAnywhere_IsRefused) {
    const auto whole = part("note", "x") + part("file", "sound") + "--velmora-B--";
    for (std::size_t size = 0; size < whole.size(); ++size) {
        expectRefused(whole.substr(0, size));
    }
    EXPECT_EQ(receive(whole), "sound");
}

TEST(MultipartUpload, WithoutFilePart_IsRefused) {
    expectRefused(part("other", "sound") + end);
}

TEST(MultipartUpload, TwoFileParts_AreRefused) {
    expectRefused(part("file", "a") + part("file", "b") + end);
}

TEST(MultipartUpload, TooManyParts_AreRefused) {
    std::string notes;
    for (int i = 0; i < 15; ++i) {
        notes += part("note", "x");
    }
    EXPECT_EQ(receive(notes + part("file", "sound") + end), "sound");
    expectRefused(notes + part("note", "x") + part("file", "sound") + end);
}

TEST(MultipartUpload, OtherContentTypes_AreRefused) {
    const auto body = part("file", "sound") + end;
    for (const std::string type : {"", "audio/m4a", "multipart/form-data",
                                   "multipart/form-data; boundary=", "multipart/mixed; boundary=velmora-B"}) {
        expectRefused(body, type);
    }
}

TEST(MultipartUpload, LongBoundary_IsRefused) {
    const auto bodyWith = [](const std::string& boundary) {
        return "--" + boundary + "\r\nContent-Disposition: form-data; name=\"file\"\r\n\r\nsound\r\n--" +
               boundary + "--\r\n";
    };
    const std::string longest(70, 'b');
    const std::string type = "multipart/form-data; boundary=";
    EXPECT_EQ(receive(bodyWith(longest), type + longest), "sound");
    expectRefused(bodyWith(longest + "b"), type + longest + "b");
}

TEST(MultipartUpload, EndlessHeader_IsRefused) {
    expectRefused("--velmora-B\r\nContent-Disposition: " + std::string(100'000, 'x') + "\r\n\r\nsound\r\n" +
                  end);
}

} // namespace
} // namespace velmora::server
