// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string_view>

/// The key material of Encode and Decode: each table is a permutation of the 95 printable ASCII characters. What a
/// database holds can be read back only with the tables it was written with, so they never change.
namespace Scrambling_Tables
{
inline constexpr int Length = 95;
inline constexpr char First_Character = ' ';

// clang-format off
inline constexpr std::array<std::string_view, 20> All{
    R"T(nmM&|!RAFy$-o`^+4<tLYQ7D%V~\r,vp(X{igu*j]zd5#cx1BJO:8I.;G@s/NT9=Se)3C0wWZ6[akf2q'UP l>E}K"bHh?_)T",
    R"T(,d}ZOveV6l&wW+%ur")?[{-_2YB@$z7i'=Hs.c]JG>T81 <hXE#So:mP~x`(f0bQ*MFaCD\!LRjt3Ig5A/^pK4n|9;yqkNU)T",
    R"T(&`U>f9XugQ6R?:0CSJ/5<G|BFN"-@sHV;n,h%4[7!e'Mjtm_OIAZ)d+.q}\x r18b~pTc*zoL3awYP(lD^Wkv]$#=yKEi2{)T",
    R"T(Ba+#1-]tug<lZL h*nsS5(w%xUCEW$@:O,A}d=3>.`cJ/v042XDKM7_"){pyeH86qob[R|FNQ9iGmY?~Pk&f\Tr^j'I;V!z)T",
    R"T(QW1/"*r+)\t^4KBk:nx@`Gz#lwX{> E}SJV]dRU(M8As2ZO!p|o-u,;&C?Y[LIq.7Fgh%Ncm3Ty$~aiPH=09j_ebv'<6fD5)T",
    R"T(0F=16{~<g 4_pz>JSlH"sPf,aQwx98rVXv/?*+u]I:i}L;mCU&eD@jNRBYZ7|3.^khO5o(T)%c'nyGW!dq`K2[E-$#MbA\t)T",
    R"T(f(aG5y|[U<m6.}4'TqAXJR^Fzchk/%lV9!)0QCI@ `N]>e:Mdo;,vS3~+sxHw&L*D_rnW#8jKu{2gO?-i=ZE\7"B$bPYpt1)T",
    R"T(75x[IuS0J~}!K Ce)GEw48#$UZMl_>qo-dt=O(v@bBjcQiPg]^k6f3{rTm*z'?|hay,X.%sVDW+/:`HA&L19Y<F2R;pNn"\)T",
    R"T(4x56nu^\tb.e"icM-0DS#Ko/W(vVg N&Z;a3>L:_<|CRPm!GlE9z1=kqAhp+Tf?[wd,%{8H`I'Q*@U$X)B7YJs2O]y}F~jr)T",
    R"T(-ZEcThb_dL.*ADWvj| >~7t89{G0%XFpKu+<Pz1?qg$'Y/4=x26BOw\ClQ;"fRmko3&#NI5V!Ji^`},[:M]r@SsH)eyaUn()T",
    R"T(&%\3F(=W7_SO6)aqJtp5VBZf{Xl:<9$~C`n*D20[AKh81;#wN.s'|^M,> g"ELuI@PUzocryx+/m!kbeTvdH-?4i}QG]YRj)T",
    R"T(N;uGJiIdyo<tLn3^DRh=x6*HlPOE4>p&~}]0WMj-a9qTSg|VkC{v(7e[ +)`/m?z@$,8'r1%X"2\:.c#K5_AwbsfF!QYBZU)T",
    R"T((6=_dajg*t5z'lSe<p2CnLxAi:HVc%P|@y&91WbZDGQw+"IEum/B-.vRk^K7[q`sfJX>OY)~ ,}0{3N8$FT;#hU!?M\ro4])T",
    R"T(>~e7rb.T;/J+z@1RLVq&3[cw(a|?"'0)o{yPxvG<}6]CsZ#K5iMhX$Q2-FuIt=YS%_*mUlN\p`8,OWEkB4^jgd9Df :H!An)T",
    R"T(1Z;_)i@z["IC:yM{Vc>N9tG'=25g#Km}eb6-LX.j!&Dp\4^?qsrfa7wl8$<|*Qvod3JR0u%YE(+ ~B/Uh],SFTkAP`OnWHx)T",
    R"T(nFsjR~9ri'e;Am25hyUW^-Mkl6"_<>1S8=d]}(0BqcV&,E$H[x!J/.KIg{L|?XD4)vt*+bOY:T@a3pNZfC#P\7zGu`w% Qo)T",
    R"T(cTzx1s{R@53lkeM\$C|P:Hj>_)}JG#.igQ;IO-67]q/W<t^Fd?V9B*2NSX[+a,fLD E4po&Y8Kv"(uUZhn='A!bmr~%w`0y)T",
    R"T(mn9S%s_yUgK![Q2GF|N:08\?#1Wr5pv;heTJO}LxY<q/ 4wc{&)jo7RClIb*Z@3zM^dk='+(AfHPBX->i.6~u$V,ta`DE]")T",
    R"T(FbE<S_'0K?7C&p{h6al]:QINX,-+q3|c9T$Ye1ry["Oj/D.^B8`uz*VU#oLM\HW=gf!4wts ;2Zi~xmR@kJ(d>Gn5}P)%vA)T",
    R"T(`>t&+Kb*]NQusx6_.IinAo\a(k}f2M^?'CY<=jEOR4J:Z !{pPXLr"|~ywlg7d3TS$vW%B-,8)19Uz[c@GVDh/e;Fm5qH#0)T",
};
// clang-format on
} // namespace Scrambling_Tables
