// The constant and built bodies of the sign-on exchange: family versions,
// client ready, and the capability block.
#pragma once

#include <string>
#include <vector>

namespace oscar {

// Ten (family, version) pairs, the list the client announces by default.
std::string FixedFamilyVersions();

// Each 2-byte family followed by its version: 0001 -> 4, 0003 -> 3, others 1.
std::string BuildFamilyVersions(const std::vector<std::string>& families);

// Ten (family, version, tool id, tool version) entries.
std::string FixedClientReady();

// `pairs` holds family, version, family, version, ... as 2-byte items; each
// pair is followed by tool id 0x0010 and tool version 0x08E5.
std::string BuildClientReady(const std::vector<std::string>& pairs);

// The two sign-on options that decide the standard capability set.
struct CapabilityOptions {
    bool fullCapabilities = false;  // "Login with full capabilities"
    bool secureIM = false;          // "Login with Secure IM"
};

// Mode 0: the standard set chosen by `options`; mode 1: the identifiers of
// `uuids` (hex) in order; any other mode: empty.
std::string BuildCapabilities(int mode, const std::vector<std::string>& uuids,
                              CapabilityOptions options);

}  // namespace oscar
