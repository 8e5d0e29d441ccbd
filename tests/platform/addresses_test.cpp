#include "platform/addresses.h"

#include "support/test.h"

namespace packwise {
namespace {

TEST(Addresses, AreSortedByWhoCanReachThem) {
    for (const auto& [address, range] : std::initializer_list<std::pair<const char*, AddressRange>>{
             {"9.255.255.255", AddressRange::Public},
             {"10.0.0.0", AddressRange::Private},
             {"10.255.255.255", AddressRange::Private},
             {"11.0.0.0", AddressRange::Public},
             {"100.63.255.255", AddressRange::Public},
             {"100.64.0.0", AddressRange::Shared},
             {"100.127.255.255", AddressRange::Shared},
             {"100.128.0.0", AddressRange::Public},
             {"127.0.0.1", AddressRange::Loopback},
             {"128.0.0.0", AddressRange::Public},
             {"169.254.255.255", AddressRange::LinkLocal},
             {"169.255.0.0", AddressRange::Public},
             {"172.15.255.255", AddressRange::Public},
             {"172.16.0.0", AddressRange::Private},
             {"172.31.255.255", AddressRange::Private},
             {"172.32.0.0", AddressRange::Public},
             {"192.168.1.20", AddressRange::Private},
             {"192.169.0.0", AddressRange::Public},
             {"192.0.0.255", AddressRange::Reserved},
             {"192.0.1.0", AddressRange::Public},
             {"192.0.2.7", AddressRange::Reserved},
             {"192.88.99.1", AddressRange::Reserved},
             {"198.17.255.255", AddressRange::Public},
             {"198.19.255.255", AddressRange::Reserved},
             {"198.20.0.0", AddressRange::Public},
             {"198.51.100.7", AddressRange::Reserved},
             {"203.0.113.7", AddressRange::Reserved},
             {"223.255.255.255", AddressRange::Public},
             {"224.0.0.1", AddressRange::Reserved},
             {"255.255.255.255", AddressRange::Reserved},
             {"0.0.0.0", AddressRange::Reserved},
             {"", AddressRange::None},
             {"router", AddressRange::None},
             {"::1", AddressRange::None}}) {
        EXPECT_EQ(rangeOf(QString::fromLatin1(address)), range) << address;
    }
}

}  // namespace
}  // namespace packwise
