#include "QLDeveloperCell.h"

#include "platform/qt/NSBundle.h"
#include "platform/qt/UIImageView.h"

const ObjCClass& QLDeveloperCell::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<QLDeveloperCell>("QLDeveloperCell", &PKPersonCell::staticClass())
                                      .method("personDescription", &QLDeveloperCell::personDescription)
                                      .method("name", &QLDeveloperCell::name)
                                      .method("twitterHandle", &QLDeveloperCell::twitterHandle)
                                      .method("imageName", &QLDeveloperCell::imageName)
                                      .build();
    return cls;
}

void QLDeveloperCell::didMoveToSuperview()
{
    PKPersonCell::didMoveToSuperview();
    auto* mark = new UIImageView(NSBundle::bundleForClass(isa()).imageNamed("Twitter.png"));
    mark->sizeToFit();
    setAccessoryView(mark);
}
