#include <QTest>
int main() { }
