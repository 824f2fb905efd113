// The linker has done the work when this exists.
int main()
{
}
