# The headers of the language and the system that most sources include: reading them anew is three quarters of the time
# that a source takes to compile. Each source includes what it uses all the same.
set(TAVIO_COMMON_HEADERS
  <algorithm> <cstdint> <filesystem> <functional> <map> <memory> <optional> <span> <string> <string_view> <utility>
  <vector> <windows.h> <oleauto.h> <wrl/client.h>)

# tavio_precompiled(<target>): shares what was compiled for the ground floor.
function(tavio_precompiled target)
  target_precompile_headers(${target} REUSE_FROM values)
endfunction()
