// Replaces functions of the C library in the statically linked program.
#include <netdb.h>

// c-ares looks up names of services by these, and nobody passes any. Those of the C library load modules.
extern "C" servent* getservbyname(const char*, const char*) { return nullptr; }
extern "C" int getservbyport_r(int, const char*, servent*, char*, size_t, servent** found) {
  *found = nullptr;
  return 0;
}

// The directory of the program, for the search of modules, of which there are none. The C library's function reads
// /proc/self/exe, which takes 2 % of a start. Returns the value for an unknown directory.
extern "C" const char* _dl_get_origin() noexcept {  // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
  return reinterpret_cast<const char*>(-1);         // NOLINT(performance-no-int-to-ptr)
}
