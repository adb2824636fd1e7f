#include "Platform/Linux/LinuxVolumes.h"

#include "Platform/Linux/MountTable.h"
#include "Support/Gate.h"
#include "Support/Wait.h"

#include <gtest/gtest.h>

#include <sys/statvfs.h>

namespace morlaine {
namespace {

struct Case {
    const char* description;
    const char* table;
    std::vector<std::string> mountPoints; // those that are queried in the background end in "~"
};

const Case cases[] = {
    {"desktop with subvolumes, a second disk and a stick",
     R"(21 28 0:19 / /sys rw,nosuid shared:2 - sysfs sysfs rw
22 28 0:20 / /proc rw,nosuid shared:12 - proc proc rw
24 23 0:22 / /dev/pts rw shared:9 - devpts devpts rw,gid=5
25 28 0:23 / /run rw,nosuid shared:11 - tmpfs tmpfs rw,size=1600000k
40 28 0:26 /@home /home rw,noatime shared:30 - btrfs /dev/nvme0n1p2 rw,subvol=/@home
28 1 0:26 /@ / rw,noatime shared:1 - btrfs /dev/nvme0n1p2 rw,subvol=/@
41 28 0:26 /@log /var/log rw,noatime shared:31 - btrfs /dev/nvme0n1p2 rw,subvol=/@log
42 28 8:17 / /srv/media rw shared:32 - xfs /dev/sdb1 rw
43 28 8:17 /films /home/ann/Films rw shared:32 - xfs /dev/sdb1 rw
44 25 8:33 / /run/media/ann/STICK rw,nosuid shared:60 - vfat /dev/sdc1 rw
45 28 0:50 / /mnt/windows rw - fuseblk /dev/nvme0n1p4 rw,user_id=0
46 25 0:51 / /run/user/1000/doc rw - fuse.portal portal rw,user_id=1000
47 28 8:49 / /data/.snapshots rw - ext4 /dev/sdd1 rw
48 28 0:52 / /pool/archive rw - zfs pool/archive rw
)",
     {"/", "/srv/media", "/run/media/ann/STICK", "/mnt/windows~", "/pool/archive~"}},
    {"laptop with installed images, EFI and container layers",
     R"(29 1 253:0 / / rw,relatime shared:1 - ext4 /dev/mapper/vg-root rw
30 29 7:0 / /snap/core22/1033 ro,nodev shared:33 - squashfs /dev/loop0 ro
31 29 7:1 / /snap/firefox/3600 ro,nodev shared:34 - squashfs /dev/loop1 ro
32 29 259:2 / /boot rw shared:35 - ext4 /dev/nvme0n1p2 rw
33 32 259:1 / /boot/efi rw shared:36 - vfat /dev/nvme0n1p1 rw
34 29 0:60 / /var/lib/docker/overlay2/8f/merged rw - overlay overlay rw,lowerdir=/a
35 29 253:0 /var/lib/docker/btrfs /var/lib/docker/btrfs rw - ext4 /dev/mapper/vg-root rw
36 29 0:61 / /tmp rw - tmpfs tmpfs rw
37 29 253:1 / /bootleg rw - ext4 /dev/mapper/vg-more rw
)",
     {"/", "/bootleg"}},
    {"container",
     R"(600 500 0:100 / / rw,relatime - overlay overlay rw,lowerdir=/x:/y
601 600 0:101 / /proc rw - proc proc rw
602 600 8:1 /docker/containers/1f/hosts /etc/hosts rw - ext4 /dev/sda1 rw
603 600 8:1 /srv/project /project rw - ext4 /dev/sda1 rw
604 600 8:1 /srv/project/more /more rw - ext4 /dev/sda1 rw
605 600 0:102 / /host rw - virtiofs share rw
)",
     {"/", "/project", "/host~"}},
    {"shares, and a disk that is only reached through one",
     R"(28 1 8:1 / / rw shared:1 - ext4 /dev/sda1 rw
60 28 0:60 / /net rw - autofs /etc/auto.net rw,fd=7,indirect
61 60 0:61 / /net/server rw - nfs4 server:/export rw,vers=4.2
62 28 0:62 / /home/ann/far rw - fuse.sshfs ann@far: rw
63 28 0:63 / /mnt/office rw - cifs //office/all\040things rw
65 28 0:65 / /mnt/nas rw - autofs systemd-1 rw,fd=31,direct
66 65 0:66 / /mnt/nas rw - nfs nas:/volume rw
64 61 8:33 / /net/server/local rw - ext4 /dev/sdc1 rw
)",
     {"/", "/net/server~", "/home/ann/far~", "/mnt/office~", "/mnt/nas~", "/net/server/local~"}},
    {"escapes, tags and broken lines",
     "28 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
     "29 28 8:2 / /media/a\\040b\\011c\\012d\\134e\\043 rw shared:1 master:2 propagate_from:3 - ext4 /dev/sdb rw\n"
     "30 28 8:3 / /media/T\xE9l\xE9 rw - ext4 /dev/sdc rw\n"
     "31 28 8:4 / /media/no\\9 rw - ext4  rw\n"
     "32 28 8:5 / /media/cut rw\n"
     "33 28 8:6\n"
     "\n"
     "34 28 8:7 / relative rw - ext4 /dev/sdd rw",
     {"/", "/media/a b\tc\nd\\e#", "/media/T\xE9l\xE9", "/media/no\\9~"}},
    {"mount over mount, listed before what it hides",
     R"(1 1 0:2 / / rw - rootfs rootfs rw
28 1 8:1 / / rw - ext4 /dev/sda1 rw
54 50 8:6 / /mnt/disk rw - ext4 /dev/sdf1 rw
50 28 8:2 / /mnt/disk rw - ext4 /dev/sdb1 rw
51 50 8:3 / /mnt/disk/inner rw - ext4 /dev/sdc1 rw
52 28 8:4 / /srv/deep/below rw - ext4 /dev/sdd1 rw
53 28 8:5 / /srv/deep rw - ext4 /dev/sde1 rw
55 54 8:7 / /mnt/disk/shown rw - ext4 /dev/sdg1 rw
56 28 0:70 / /opt/quiet rw - tmpfs tmpfs rw
57 56 8:8 / /opt/quiet/disk rw - ext4 /dev/sdh1 rw
)",
     {"/", "/mnt/disk", "/srv/deep", "/mnt/disk/shown", "/opt/quiet/disk"}},
    {"system in memory", "28 1 0:2 / / rw - tmpfs tmpfs rw\n29 28 0:3 / /proc rw - proc proc rw\n", {}},
};

TEST(MountTableTest, ListsWhatPeopleWouldCallVolumes)
{
    for (const Case& each : cases) {
        SCOPED_TRACE(each.description);
        std::vector<std::string> mountPoints;
        for (const Mount& mount : mountsForPeople(each.table)) {
            mountPoints.push_back(mount.mountPoint + (mount.answersAtOnce ? "" : "~"));
        }
        EXPECT_EQ(mountPoints, each.mountPoints);
    }
}

/// Shares of which one hangs until the gate opens, one answers and one fails.
class FakeQueries final : public MountQueries {
public:
    mutable test::Gate gate;
    mutable test::Gate answered;

    [[nodiscard]] std::string mountInfo() const override
    {
        return "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n"
               "2 1 0:2 / /hangs rw - nfs server:/ rw\n"
               "3 1 0:3 / /answers rw - nfs other:/ rw\n"
               "4 1 0:4 / /fails rw - nfs third:/ rw\n";
    }

    [[nodiscard]] std::optional<Capacity> capacity(const std::string& mountPoint) const override
    {
        if (mountPoint == "/hangs") {
            gate.pass();
            answered.open();
        }
        return mountPoint == "/fails" ? std::nullopt : std::optional(Capacity{100, 40});
    }

    [[nodiscard]] std::string label(const std::string& source) const override
    {
        return source == "/dev/sda1" ? "T\xE9l" : "";
    }
};

TEST(LinuxVolumesTest, LeavesOutWhatDoesNotAnswer)
{
    const auto queries = std::make_shared<const FakeQueries>();
    {
        const LinuxVolumes volumes(queries, std::chrono::milliseconds(100));
        std::vector<MountedVolume> mounted;
        ASSERT_TRUE(test::waitUntil([&] { return (mounted = volumes.mountedVolumes()).size() == 2; }));
        EXPECT_EQ(mounted[0].url.path(), "/");
        EXPECT_EQ(mounted[0].name, "T\xEF\xBF\xBDl");
        EXPECT_EQ(mounted[0].totalCapacity, 100);
        EXPECT_EQ(mounted[0].availableCapacity, 40);
        EXPECT_EQ(mounted[1].url.path(), "/answers");
        EXPECT_EQ(mounted[1].name, "");
    }
    queries->gate.open();
    queries->answered.pass(); // the answer arrives after the volumes are destroyed
}

TEST(LinuxVolumesTest, DecodesLabels)
{
    EXPECT_EQ(decodedLabel(R"(My\x20Disk\x2fA \x5cx20 \xzz end\x2)"), R"(My Disk/A \x20 \xzz end\x2)");
}

TEST(LinuxVolumesTest, TellsTheCapacitiesOfTheRunningSystem)
{
    for (const MountedVolume& volume : Volumes::native()->mountedVolumes()) {
        struct statvfs values {};
        ASSERT_EQ(::statvfs(volume.url.path().c_str(), &values), 0) << volume.url.path();
        EXPECT_EQ(volume.totalCapacity, static_cast<std::int64_t>(values.f_blocks * values.f_frsize));
        EXPECT_TRUE(volume.availableCapacity >= 0 && volume.availableCapacity <= volume.totalCapacity);
    }
}

} // namespace
} // namespace morlaine
