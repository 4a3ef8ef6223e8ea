#include "peers.hpp"

#include <sstream>

namespace bench {

std::vector<std::pair<std::string, std::string>> PeerVersions() {
    const auto version = [](int major, int minor, int patch) {
        std::ostringstream text;
        text << major << '.' << minor << '.' << patch;
        return text.str();
    };
    std::vector<std::pair<std::string, std::string>> versions{
        {"Eigen", version(EIGEN_WORLD_VERSION, EIGEN_MAJOR_VERSION, EIGEN_MINOR_VERSION)},
        {"xsimd", version(XSIMD_VERSION_MAJOR, XSIMD_VERSION_MINOR, XSIMD_VERSION_PATCH)}};
#ifdef NX_HAVE_SLEEF
    versions.emplace_back(
        "SLEEF", version(SLEEF_VERSION_MAJOR, SLEEF_VERSION_MINOR, SLEEF_VERSION_PATCHLEVEL));
#endif
    return versions;
}

} // namespace bench
