#include "simulator/world.h"

#include "simulator/json.h"

namespace zephsim {

Json::Value* World::adapter(const std::string& id) { return findBy(adapters->value, "guid", id); }

}  // namespace zephsim
