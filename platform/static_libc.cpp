// Replaces functions of the C library in the statically linked program.
#include <netdb.h>

// c-ares uses these to look up service names, which no caller passes. The C library's own functions load modules.
extern "C" servent* getservbyname(const char*, const char*) { return nullptr; }
extern "C" int getservbyport_r(int, const char*, servent*, char*, size_t, servent** found) {
  *found = nullptr;
  return 0;
}

// Returns the directory of the program, which serves to find modules; there are no modules. The C library's function
// reads /proc/self/exe, which takes 2 % of the start-up time. This one returns the value for an unknown directory.
extern "C" const char* _dl_get_origin() noexcept {  // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
  return reinterpret_cast<const char*>(-1);         // NOLINT(performance-no-int-to-ptr)
}
