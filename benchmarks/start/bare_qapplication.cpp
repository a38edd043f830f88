// The peer of the start-up benchmark: a program that does nothing but start and end Qt's widgets.
#include <QApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    // With an argument it stays, so that its memory can be read.
    if (argc > 1)
        std::getchar();
    return 0;
}
