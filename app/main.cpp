#include "RunVireon.h"

int main(int argc, char* argv[])
{
    return runVireon(argc, argv);
}
