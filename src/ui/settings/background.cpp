#include "ui/settings/background.h"

void Background::Run(const Work& work) {
    StartDetached([this, work, answer = way, number = ++newest] {
        answer.Post([this, done = work(), number] {
            if (newest == number) done();
        });
    });
}
