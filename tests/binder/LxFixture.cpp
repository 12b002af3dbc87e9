// A small library for the binder tests: two exported functions, "FixtureAlpha" and "FixtureBeta".

extern "C" int FixtureAlpha()
{
    return 1;
}

extern "C" int FixtureBeta()
{
    return 2;
}
