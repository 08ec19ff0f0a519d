// Only links zephctl's libraries: the baseline for the memory of zephctl.
int main() { return 0; }
