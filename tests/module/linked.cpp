// A program whose static object, and those of the libraries that it is linked with, are the test.
int main() {}
