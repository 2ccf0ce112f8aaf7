#pragma once

#include <cstdint>
#include <memory>
#include <nlohmann/json_fwd.hpp>

namespace settings {

// Turns one tree after another into the differences between them (RFC 6902), and counts them.
// Nodes are compared member by member under their identity, and a member that differs is replaced
// as a whole: small, and no index of a list ever has to be followed.
//
// Threads: belongs to one.
class PatchStream {
 public:
  PatchStream();
  ~PatchStream();
  PatchStream(const PatchStream&) = delete;
  PatchStream& operator=(const PatchStream&) = delete;

  // The operations that make the shown tree equal to `tree`, which becomes the shown one; its
  // revision goes up by one, also where nothing else differs. The patch sets "/revision" too.
  nlohmann::json advance(const nlohmann::json& tree);

  // The tree as it was shown last, with the stream's own revision in it.
  const nlohmann::json& shown() const;
  // 0 before the first tree.
  std::uint64_t revision() const noexcept { return _revision; }

 private:
  std::unique_ptr<nlohmann::json> _shown;
  std::uint64_t _revision = 0;
};

}  // namespace settings
