#include "oscar/login_request.h"

#include "oscar/encoding.h"
#include "oscar/md5.h"

namespace oscar {

namespace {
constexpr std::string_view kMd5Salt = "AOL Instant Messenger (SM)";
}

std::string LoginHash(std::string_view key, std::string_view password) {
    Md5 md5;
    md5.Update(key);
    md5.Update(MD5Digest(password));
    md5.Update(kMd5Salt);
    return md5.Finish();
}

std::string BuildLoginRequest(std::string_view screenName, std::string_view password,
                              std::string_view key) {
    const std::string nameTLV = MakeTLV("0001", 2, screenName);
    if (nameTLV.empty()) return {};
    return HexToBytes("00170002000000000001") + nameTLV +
           MakeTLV("0025", 2, LoginHash(key, password)) + MakeTLV("004C", 2, "") +
           MakeTLV("0003", 2, kClientIdentification) + MakeTLV("0016", 2, Word(0x006D)) +
           MakeTLV("0017", 2, Word(5)) + MakeTLV("0018", 2, Word(5)) + MakeTLV("0019", 2, Word(0)) +
           MakeTLV("001A", 2, Word(0x0E0F)) + MakeTLV("0014", 2, DWord(0x010A)) +
           MakeTLV("000F", 2, "en") + MakeTLV("000E", 2, "us") +
           MakeTLV("004A", 2, HexToBytes("01"));
}

}  // namespace oscar
