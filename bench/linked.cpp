// Only links what zephctl links: the memory that zephctl's is held against.
int main() { return 0; }
