// A simulator, as far as plugins are concerned: loads one by its file name, runs its model in a thread and unloads it
// while that thread lives. What the library keeps for the thread must still be there to be put away when it ends.
#include <dlfcn.h>

#include <atomic>
#include <cstdio>
#include <thread>

namespace {
std::atomic<bool> has_run{false};
std::atomic<bool> is_unloaded{false};
bool is_right = false;

void simulate(int (*run_model)()) {
    is_right = run_model() != 0;
    has_run = true;
    while (!is_unloaded) {
        std::this_thread::yield();
    }
}
}  // namespace

int main(int count, char** arguments) {
    void* const plugin = count == 2 ? dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL) : nullptr;
    if (plugin == nullptr) {
        std::printf("no plugin: %s\n", count == 2 ? dlerror() : "usage: host PLUGIN");
        return 1;
    }
    void* const symbol = dlsym(plugin, "run_model");
    if (symbol == nullptr) {
        std::printf("no model: %s\n", dlerror());
        return 1;
    }

    std::thread thread(simulate, reinterpret_cast<int (*)()>(symbol));
    while (!has_run) {
        std::this_thread::yield();
    }
    const bool closed = dlclose(plugin) == 0;
    is_unloaded = true;
    thread.join();
    std::printf("model %s, plugin %s\n", is_right ? "right" : "wrong", closed ? "closed" : "not closed");
    return is_right && closed ? 0 : 1;
}
