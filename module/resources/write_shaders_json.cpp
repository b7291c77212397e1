// Writes shaders.json from the shaders' tables.
int main() { return 0; }
