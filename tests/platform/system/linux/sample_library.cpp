extern "C" int tolvekSample(int value)
{
    return value + 1;
}
