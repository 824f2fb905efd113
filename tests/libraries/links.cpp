// An empty program. The test is that the linker can build it from all objects of a library.
int main()
{
}
