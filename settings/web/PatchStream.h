#pragma once

#include <cstdint>
#include <memory>
#include <nlohmann/json_fwd.hpp>

namespace settings {

// Turns successive trees into the differences between them (RFC 6902), and numbers them. Compares
// nodes by identity and member by member; a member that differs is replaced as a whole. This keeps
// patches small and avoids list indexes.
//
// Threads: one.
class PatchStream {
 public:
  PatchStream();
  ~PatchStream();
  PatchStream(const PatchStream&) = delete;
  PatchStream& operator=(const PatchStream&) = delete;

  // Returns the operations that turn the shown tree into `tree`, which becomes the shown tree. The
  // revision increases by one even if nothing else differs. The patch also sets "/revision".
  nlohmann::json advance(const nlohmann::json& tree);

  // The tree that was shown last, with the stream's own revision.
  const nlohmann::json& shown() const;
  // 0 before the first tree.
  std::uint64_t revision() const noexcept { return _revision; }

 private:
  std::unique_ptr<nlohmann::json> _shown;
  std::uint64_t _revision = 0;
};

}  // namespace settings
