// SPDX-License-Identifier: GPL-3.0-or-later
#include "library_words.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace
{
const QStringList &Chinese()
{
    static const QStringList words =
        u"项目 计划 会议 记录 客户 合同 预算 报告 数据 系统 设计 测试 学习 笔记 读书 历史 地理 数学 物理 化学 生物 "
        u"语言 翻译 旅行 照片 家庭 孩子 健康 运动 菜谱 花园 汽车 房屋 装修 保险 银行 投资 税务 工资 采购 供应 仓库 "
        u"运输 质量 安全 培训 招聘 制度 流程 市场 广告 销售 服务 投诉 问题 方法 原因 结果 经验 总结 月度 年度 春天 "
        u"夏天 秋天 冬天 上海 北京 广州 成都 音乐 电影 诗歌 小说 哲学 经济 法律 教育 医学 网络 程序 文件 备份"_s.split(
            u' ');
    return words;
}

const QStringList &English()
{
    static const QStringList words =
        u"project plan meeting notes customer contract budget report data system design review lesson reading history "
        u"physics biology language travel photo family health garden recipe engine house repair insurance bank tax "
        u"salary order supply storage transport quality safety training process market service question method reason "
        u"result summary weekly yearly spring summer autumn winter music film poem novel philosophy law education "
        u"medicine network program file backup letter draft table index archive letterhead budgeted reviewed"_s.split(
            u' ');
    return words;
}

const QString &Word(QRandomGenerator &random, const QStringList &words)
{
    // Common words are common: the square of an even distribution leans to the list's beginning.
    const double place = random.generateDouble();
    return words.at(static_cast<qsizetype>(place * place * static_cast<double>(words.size())));
}

QString Chinese_Words(QRandomGenerator &random, int count)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += Word(random, Chinese());
    return text;
}

QString English_Words(QRandomGenerator &random, int count)
{
    QString text = Word(random, English());
    for (int i = 1; i < count; ++i)
        text += u' ' + Word(random, English());
    text[0] = text.at(0).toUpper();
    return text;
}

bool In_Chinese(QRandomGenerator &random)
{
    return random.bounded(10) < 7;
}
} // namespace

namespace Library_Words
{
QString Title(QRandomGenerator &random)
{
    const int words = 2 + random.bounded(4);
    QString title = In_Chinese(random) ? Chinese_Words(random, words) : English_Words(random, words);
    if (random.bounded(4) == 0)
        title += u" %1"_s.arg(2011 + random.bounded(15));
    return title;
}

QString Name(QRandomGenerator &random)
{
    return In_Chinese(random) ? Chinese_Words(random, 2) : English_Words(random, 1 + random.bounded(2));
}

QString Author(QRandomGenerator &random)
{
    static const QStringList authors =
        u"王芳,李伟,张敏,刘洋,陈静,杨军,赵磊,A. Baker,M. Fischer,J. Moreau"_s.split(u',');
    return authors.at(random.bounded(static_cast<int>(authors.size())));
}

QString Keys(QRandomGenerator &random)
{
    QStringList keys;
    for (int i = random.bounded(4); i > 0; --i)
        keys << Word(random, In_Chinese(random) ? Chinese() : English());
    return keys.join(u',');
}

QString Paragraph(QRandomGenerator &random)
{
    const bool chinese = In_Chinese(random);
    QString text;
    for (int i = 1 + random.bounded(5); i > 0; --i) {
        const int words = 4 + random.bounded(12);
        text += chinese ? Chinese_Words(random, words) + u'。' : English_Words(random, words) + u". "_s;
    }
    return text;
}
} // namespace Library_Words
