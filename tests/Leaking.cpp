// Loses an object, so that a suite that doesn't look for leaks is noticed.

int main()
{
    static int* volatile pObject = nullptr;
    pObject = new int(1);
    pObject = nullptr;
    return 0;
}
