#include "oscar/bodies.h"

#include "oscar/encoding.h"

namespace oscar {

namespace {

constexpr const char* kFullCapabilities[] = {
    "094601054C7F11D18222444553540000", "0946134A4C7F11D18222444553540000",
    "0946134B4C7F11D18222444553540000", "0946134D4C7F11D18222444553540000",
    "094613414C7F11D18222444553540000", "094600004C7F11D18222444553540000",
    "094613434C7F11D18222444553540000", "094613FF4C7F11D18222444553540000",
    "094601FF4C7F11D18222444553540000", "094601014C7F11D18222444553540000",
    "094613454C7F11D18222444553540000", "094601024C7F11D18222444553540000",
    "094613464C7F11D18222444553540000", "094613474C7F11D18222444553540000",
    "748F2420628711D18222444553540000", "094613484C7F11D18222444553540000",
};
constexpr const char* kSecureIMCapability = "094600014C7F11D18222444553540000";

}  // namespace

std::string FixedFamilyVersions() {
    return HexToBytes(
        "0001000400130003000200010003000100040001000600010008000100090001000A0001000B0001");
}

std::string BuildFamilyVersions(const std::vector<std::string>& families) {
    std::string body;
    for (const std::string& family : families) {
        body += family;
        if (family == HexToBytes("0001")) {
            body += Word(4);
        } else if (family == HexToBytes("0003")) {
            body += Word(3);
        } else {
            body += Word(1);
        }
    }
    return body;
}

std::string FixedClientReady() {
    return HexToBytes(
        "00010004011008E500130003011008E500020001011008E500030001011008E500040001011008E5"
        "00060001011008E5000800010104000100090001011008E5000A0001011008E5000B0001011008E5");
}

std::string BuildClientReady(const std::vector<std::string>& pairs) {
    std::string body;
    for (std::size_t i = 0; i < pairs.size(); i += 2) {
        body += pairs[i];
        if (i + 1 < pairs.size()) body += pairs[i + 1];
        body += HexToBytes("001008E5");
    }
    return body;
}

std::string BuildCapabilities(int mode, const std::vector<std::string>& uuids,
                              CapabilityOptions options) {
    std::string hex;
    if (mode == 0) {
        if (options.fullCapabilities) {
            for (const char* id : kFullCapabilities)
                hex += id;
        }
        if (options.secureIM) hex += kSecureIMCapability;
    } else if (mode == 1) {
        for (const std::string& id : uuids)
            hex += id;
    }
    return HexToBytes(hex);
}

}  // namespace oscar
